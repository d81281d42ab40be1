#include "vbscript/objects/FileSystemObject.hpp"

#include <array>
#include <cstdio>
#include <random>

#include "automation/Declare.hpp"
#include "vbscript/Errors.hpp"
#include "vbscript/objects/DosPath.hpp"
#include "vbscript/objects/Drive.hpp"
#include "vbscript/objects/Drives.hpp"
#include "vbscript/objects/File.hpp"
#include "vbscript/objects/FileErrors.hpp"
#include "vbscript/objects/FileTree.hpp"
#include "vbscript/objects/FileVersion.hpp"
#include "vbscript/objects/Folder.hpp"
#include "vbscript/objects/StandardObjects.hpp"
#include "vbscript/objects/StandardStreams.hpp"

namespace hearthmake::vbscript {

using automation::Make;
using automation::Ref;

namespace {

enum SpecialFolder : std::int32_t { kWindowsFolder = 0, kSystemFolder = 1, kTemporaryFolder = 2 };

// The letter that a drive is named by: "c", "c:" or "c:\"; 0 for another text.
char DriveLetterOf(std::string_view text) {
  while (text.size() > 2 && dospath::IsSeparator(text.back())) text.remove_suffix(1);
  const bool isDrive = text.size() == 1 || (text.size() == 2 && text[1] == ':');
  if (!isDrive) return '\0';
  const char letter = text[0] >= 'a' && text[0] <= 'z' ? static_cast<char>(text[0] - 'a' + 'A') : text[0];
  return letter >= 'A' && letter <= 'Z' ? letter : '\0';
}

std::string TemporaryFolderOf(const platform::Platform& ports) {
  // A script may leave files there for the next one, which the system's own folder does not promise.
  for (const char* name : {"TEMP", "TMP"}) {
    const auto folder = ports.system->EnvironmentVariable(name);
    if (folder && !dospath::DriveName(*folder).empty() && ports.files->FolderExists(*folder)) return *folder;
  }
  return ports.system->TemporaryFolder();
}

}  // namespace

const automation::Interface& FileSystemObject::Declaration() const {
  using Self = FileSystemObject;
  static const automation::Interface kDeclaration =
      automation::Declare("FileSystemObject", "IFileSystem3", "", "")
          .get<&Self::Drives>("Drives")
          .method<&Self::BuildPath>("BuildPath", {"Path", "Name"})
          .method<&Self::GetDriveName>("GetDriveName", {"Path"})
          .method<&Self::GetParentFolderName>("GetParentFolderName", {"Path"})
          .method<&Self::GetFileName>("GetFileName", {"Path"})
          .method<&Self::GetBaseName>("GetBaseName", {"Path"})
          .method<&Self::GetExtensionName>("GetExtensionName", {"Path"})
          .method<&Self::GetAbsolutePathName>("GetAbsolutePathName", {"Path"})
          .method<&Self::GetTempName>("GetTempName")
          .method<&Self::DriveExists>("DriveExists", {"DriveSpec"})
          .method<&Self::FileExists>("FileExists", {"FileSpec"})
          .method<&Self::FolderExists>("FolderExists", {"FolderSpec"})
          .method<&Self::GetDrive>("GetDrive", {"DriveSpec"})
          .method<&Self::GetFile>("GetFile", {"FilePath"})
          .method<&Self::GetFolder>("GetFolder", {"FolderPath"})
          .method<&Self::GetSpecialFolder>("GetSpecialFolder", {"SpecialFolder"})
          .method<&Self::DeleteFile>("DeleteFile", {"FileSpec", "Force"})
          .method<&Self::DeleteFolder>("DeleteFolder", {"FolderSpec", "Force"})
          .method<&Self::MoveFile>("MoveFile", {"Source", "Destination"})
          .method<&Self::MoveFolder>("MoveFolder", {"Source", "Destination"})
          .method<&Self::CopyFile>("CopyFile", {"Source", "Destination", "OverWriteFiles"})
          .method<&Self::CopyFolder>("CopyFolder", {"Source", "Destination", "OverWriteFiles"})
          .method<&Self::CreateFolder>("CreateFolder", {"Path"})
          .method<&Self::CreateTextFile>("CreateTextFile", {"FileName", "Overwrite", "Unicode"})
          .method<&Self::OpenTextFile>("OpenTextFile", {"FileName", "IOMode", "Create", "Format"})
          .method<&Self::GetStandardStream>("GetStandardStream", {"StandardStreamType", "Unicode"})
          .method<&Self::GetFileVersion>("GetFileVersion", {"FileName"})
          .build();
  return kDeclaration;
}

Ref<Drives> FileSystemObject::Drives() { return Make<vbscript::Drives>(m_context); }

std::string FileSystemObject::BuildPath(const std::string& path, const std::string& name) {
  return dospath::Join(path, name);
}

std::string FileSystemObject::GetDriveName(const std::string& path) { return dospath::DriveName(path); }

std::string FileSystemObject::GetParentFolderName(const std::string& path) {
  return dospath::ParentFolderName(path);
}

std::string FileSystemObject::GetFileName(const std::string& path) { return dospath::FileName(path); }

std::string FileSystemObject::GetBaseName(const std::string& path) { return dospath::BaseName(path); }

std::string FileSystemObject::GetExtensionName(const std::string& path) {
  return dospath::ExtensionName(path);
}

std::string FileSystemObject::GetAbsolutePathName(const std::string& path) {
  return WithScriptErrors([&] { return dospath::Absolute(path, Files().CurrentFolder()); });
}

std::string FileSystemObject::GetTempName() {
  static std::minstd_rand generator{std::random_device{}()};
  constexpr unsigned kFiveDigits = 0xFFFFF;
  std::array<char, 16> name{};
  std::snprintf(name.data(), name.size(), "rad%05X.tmp", static_cast<unsigned>(generator()) & kFiveDigits);
  return name.data();
}

bool FileSystemObject::DriveExists(const std::string& drive) {
  const std::string name = dospath::DriveName(drive);
  const char letter = DriveLetterOf(name.empty() ? drive : name);
  return letter != '\0' && Files().DriveLetters().find(letter) != std::string::npos;
}

bool FileSystemObject::FileExists(const std::string& file) { return Files().FileExists(file); }

bool FileSystemObject::FolderExists(const std::string& folder) { return Files().FolderExists(folder); }

Ref<Drive> FileSystemObject::GetDrive(const std::string& drive) {
  const char letter = DriveLetterOf(drive);
  if (letter != '\0') return OpenDrive(m_context, letter);
  const bool isShare = drive.starts_with("\\\\") && dospath::DriveName(drive) == drive;
  RaiseRuntime(isShare ? number::kDeviceUnavailable : number::kInvalidProcedureCall);
}

Ref<File> FileSystemObject::GetFile(const std::string& path) {
  return OpenFile(m_context, AbsolutePath(m_context, path));
}

Ref<Folder> FileSystemObject::GetFolder(const std::string& path) {
  if (path.empty()) RaiseRuntime(number::kInvalidProcedureCall);
  return OpenFolder(m_context, AbsolutePath(m_context, path));
}

Ref<Folder> FileSystemObject::GetSpecialFolder(std::int32_t which) {
  const platform::Platform& ports = m_context.host.Platform();
  switch (which) {
    case kWindowsFolder:
      return Make<Folder>(m_context, dospath::ParentFolderName(ports.system->SystemFolder()));
    case kSystemFolder: return Make<Folder>(m_context, ports.system->SystemFolder());
    case kTemporaryFolder: return Make<Folder>(m_context, AbsolutePath(m_context, TemporaryFolderOf(ports)));
    default: RaiseRuntime(number::kInvalidProcedureCall);
  }
}

void FileSystemObject::DeleteFile(const std::string& file, std::optional<bool> force) {
  FileTree(m_context).DeleteFiles(file, force.value_or(false));
}

void FileSystemObject::DeleteFolder(const std::string& folder, std::optional<bool> force) {
  FileTree(m_context).DeleteFolders(folder, force.value_or(false));
}

void FileSystemObject::MoveFile(const std::string& source, const std::string& target) {
  FileTree(m_context).MoveFiles(source, target);
}

void FileSystemObject::MoveFolder(const std::string& source, const std::string& target) {
  FileTree(m_context).MoveFolders(source, target);
}

void FileSystemObject::CopyFile(const std::string& source, const std::string& target,
                                std::optional<bool> mayReplace) {
  FileTree(m_context).CopyFiles(source, target, mayReplace.value_or(true));
}

void FileSystemObject::CopyFolder(const std::string& source, const std::string& target,
                                  std::optional<bool> mayReplace) {
  FileTree(m_context).CopyFolders(source, target, mayReplace.value_or(true));
}

Ref<Folder> FileSystemObject::CreateFolder(const std::string& path) {
  const std::string folder = AbsolutePath(m_context, path);
  WithScriptErrors([&] { Files().CreateFolder(folder); });
  return Make<Folder>(m_context, folder);
}

Ref<TextStream> FileSystemObject::CreateTextFile(const std::string& path, std::optional<bool> mayReplace,
                                                 std::optional<bool> isUnicode) {
  return TextStream::CreateFile(m_context, AbsolutePath(m_context, path), mayReplace.value_or(true),
                                isUnicode.value_or(false));
}

Ref<TextStream> FileSystemObject::OpenTextFile(const std::string& path, std::optional<std::int32_t> mode,
                                               std::optional<bool> mayCreate,
                                               std::optional<std::int32_t> format) {
  return OpenTextStream(m_context, AbsolutePath(m_context, path), mode, mayCreate.value_or(false), format);
}

Ref<TextStream> FileSystemObject::GetStandardStream(std::int32_t which, std::optional<bool> /*isUnicode*/) {
  if (which < 0 || which > 2) RaiseRuntime(number::kInvalidProcedureCall);
  return OpenStandardStream(m_context, static_cast<StandardStream>(which));
}

std::string FileSystemObject::GetFileVersion(const std::string& path) {
  const std::string file = AbsolutePath(m_context, path);
  return WithScriptErrors([&] { return ReadFileVersion(*Files().Open(file), m_context.budget); });
}

Ref<TextStream> OpenTextStream(Context& context, const std::string& absolutePath,
                               std::optional<std::int32_t> mode, bool mayCreate,
                               std::optional<std::int32_t> format) {
  const auto streamMode = static_cast<TextStream::Mode>(mode.value_or(1));
  switch (streamMode) {
    case TextStream::Mode::Reading:
    case TextStream::Mode::Writing:
    case TextStream::Mode::Appending: break;
    default: RaiseRuntime(number::kInvalidProcedureCall);
  }
  const auto streamFormat = static_cast<TextStream::Format>(format.value_or(0));
  switch (streamFormat) {
    case TextStream::Format::Unicode:
    case TextStream::Format::Default:
    case TextStream::Format::Ascii: break;
    default: RaiseRuntime(number::kInvalidProcedureCall);
  }
  return TextStream::OpenFile(context, absolutePath, streamMode, mayCreate, streamFormat);
}

std::string AbsolutePath(Context& context, const std::string& path) {
  if (path.empty()) RaiseRuntime(number::kInvalidProcedureCall);
  return WithScriptErrors(
      [&] { return dospath::Absolute(path, context.host.Platform().files->CurrentFolder()); });
}

Ref<automation::Object> CreateFileSystemObject(Context& context) {
  if (!context.host.Platform().files) return nullptr;
  return Make<FileSystemObject>(context);
}

}  // namespace hearthmake::vbscript
