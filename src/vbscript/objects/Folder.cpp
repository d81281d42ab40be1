#include "vbscript/objects/Folder.hpp"

#include "automation/Declare.hpp"
#include "vbscript/Errors.hpp"
#include "vbscript/objects/DosPath.hpp"
#include "vbscript/objects/Drive.hpp"
#include "vbscript/objects/File.hpp"
#include "vbscript/objects/FileErrors.hpp"
#include "vbscript/objects/FileSystemObject.hpp"
#include "vbscript/objects/FileTree.hpp"
#include "vbscript/objects/Files.hpp"
#include "vbscript/objects/Folders.hpp"
#include "vbscript/objects/TextStream.hpp"

namespace hearthmake::vbscript {

const automation::Interface& Folder::Declaration() const {
  static const automation::Interface kDeclaration =
      automation::Declare("Folder", "IFolder", "", "")
          .byDefault()
          .get<&Folder::Path>("Path")
          .get<&Folder::Name>("Name")
          .let<&Folder::SetName>("Name", {"Name"})
          .get<&Folder::ShortPath>("ShortPath")
          .get<&Folder::ShortName>("ShortName")
          .get<&Folder::Drive>("Drive")
          .get<&Folder::ParentFolder>("ParentFolder")
          .get<&Folder::Attributes>("Attributes")
          .let<&Folder::SetAttributes>("Attributes", {"Attributes"})
          .get<&Folder::DateCreated>("DateCreated")
          .get<&Folder::DateLastModified>("DateLastModified")
          .get<&Folder::DateLastAccessed>("DateLastAccessed")
          .get<&Folder::Type>("Type")
          .method<&Folder::Delete>("Delete", {"Force"})
          .method<&Folder::Copy>("Copy", {"Destination", "OverWriteFiles"})
          .method<&Folder::Move>("Move", {"Destination"})
          .get<&Folder::IsRootFolder>("IsRootFolder")
          .get<&Folder::Size>("Size")
          .get<&Folder::SubFolders>("SubFolders")
          .get<&Folder::Files>("Files")
          .method<&Folder::CreateTextFile>("CreateTextFile", {"FileName", "Overwrite", "Unicode"})
          .build();
  return kDeclaration;
}

automation::Variant Folder::Size() {
  Details();
  return ByteCount(FileTree(m_context).SizeOf(m_path));
}

std::string Folder::Type() {
  Details();
  return dospath::IsRoot(m_path) ? "Local Disk" : "File folder";
}

bool Folder::IsRootFolder() const { return dospath::IsRoot(m_path); }

automation::Ref<Files> Folder::Files() { return automation::Make<vbscript::Files>(m_context, m_path); }

automation::Ref<Folders> Folder::SubFolders() { return automation::Make<Folders>(m_context, m_path); }

void Folder::Copy(const std::string& target, std::optional<bool> mayReplace) {
  FileTree(m_context).CopyFolders(m_path, target, mayReplace.value_or(true));
}

void Folder::Move(const std::string& target) {
  FileTree(m_context).MoveFolders(m_path, target);
  m_path = PathAfterMove(m_context, m_path, target);
}

void Folder::Delete(std::optional<bool> force) {
  FileTree(m_context).DeleteFolders(m_path, force.value_or(false));
}

automation::Ref<TextStream> Folder::CreateTextFile(const std::string& name, std::optional<bool> mayReplace,
                                                   std::optional<bool> isUnicode) {
  if (name.empty()) RaiseRuntime(number::kInvalidProcedureCall);
  return TextStream::CreateFile(m_context, dospath::Absolute(name, m_path), mayReplace.value_or(true),
                                isUnicode.value_or(false));
}

automation::Ref<Folder> OpenFolder(Context& context, const std::string& path) {
  if (!context.host.Platform().files->FolderExists(path)) RaiseRuntime(number::kPathNotFound);
  return automation::Make<Folder>(context, path);
}

}  // namespace hearthmake::vbscript
