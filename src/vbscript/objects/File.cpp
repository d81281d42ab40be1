#include "vbscript/objects/File.hpp"

#include "automation/Declare.hpp"
#include "automation/Text.hpp"
#include "vbscript/Errors.hpp"
#include "vbscript/objects/DosPath.hpp"
#include "vbscript/objects/Drive.hpp"
#include "vbscript/objects/FileErrors.hpp"
#include "vbscript/objects/FileSystemObject.hpp"
#include "vbscript/objects/FileTree.hpp"
#include "vbscript/objects/Folder.hpp"
#include "vbscript/objects/TextStream.hpp"

namespace hearthmake::vbscript {

namespace {

// The default value of a key of HKEY_CLASSES_ROOT; "" when there is none.
std::string ClassText(platform::Registry& registry, const std::string& key) {
  const auto value = registry.Query(platform::RegistryRoot::ClassesRoot, key, "");
  return value && value->type == platform::RegistryType::String ? value->data : "";
}

}  // namespace

const automation::Interface& File::Declaration() const {
  static const automation::Interface kDeclaration =
      automation::Declare("File", "IFile", "", "")
          .byDefault()
          .get<&File::Path>("Path")
          .get<&File::Name>("Name")
          .let<&File::SetName>("Name", {"Name"})
          .get<&File::ShortPath>("ShortPath")
          .get<&File::ShortName>("ShortName")
          .get<&File::Drive>("Drive")
          .get<&File::ParentFolder>("ParentFolder")
          .get<&File::Attributes>("Attributes")
          .let<&File::SetAttributes>("Attributes", {"Attributes"})
          .get<&File::DateCreated>("DateCreated")
          .get<&File::DateLastModified>("DateLastModified")
          .get<&File::DateLastAccessed>("DateLastAccessed")
          .get<&File::Size>("Size")
          .get<&File::Type>("Type")
          .method<&File::Delete>("Delete", {"Force"})
          .method<&File::Copy>("Copy", {"Destination", "OverWriteFiles"})
          .method<&File::Move>("Move", {"Destination"})
          .method<&File::OpenAsTextStream>("OpenAsTextStream", {"IOMode", "Format"})
          .build();
  return kDeclaration;
}

automation::Variant File::Size() { return ByteCount(Details().size); }

std::string File::Type() {
  Details();
  const std::string extension = dospath::ExtensionName(m_path);
  if (const auto& registry = m_context.host.Platform().registry; registry && !extension.empty()) {
    const std::string fileClass = ClassText(*registry, "." + extension);
    const std::string type = fileClass.empty() ? "" : ClassText(*registry, fileClass);
    if (!type.empty()) return type;
  }
  return extension.empty() ? "File" : automation::Upper(extension) + " File";
}

void File::Copy(const std::string& target, std::optional<bool> mayReplace) {
  FileTree(m_context).CopyFiles(m_path, target, mayReplace.value_or(true));
}

void File::Move(const std::string& target) {
  FileTree(m_context).MoveFiles(m_path, target);
  m_path = PathAfterMove(m_context, m_path, target);
}

void File::Delete(std::optional<bool> force) {
  FileTree(m_context).DeleteFiles(m_path, force.value_or(false));
}

automation::Ref<TextStream> File::OpenAsTextStream(std::optional<std::int32_t> mode,
                                                   std::optional<std::int32_t> format) {
  return OpenTextStream(m_context, m_path, mode, false, format);
}

automation::Ref<File> OpenFile(Context& context, const std::string& path) {
  platform::FileSystem& files = *context.host.Platform().files;
  if (!files.FileExists(path)) {
    WithScriptErrors([&] { files.Details(path); });
    RaiseRuntime(number::kFileNotFound);
  }
  return automation::Make<File>(context, path);
}

std::string PathAfterMove(Context& context, const std::string& path, const std::string& target) {
  const std::string place = AbsolutePath(context, target);
  return dospath::IsSeparator(target.back()) ? dospath::Join(place, dospath::FileName(path)) : place;
}

}  // namespace hearthmake::vbscript
