#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "automation/Object.hpp"
#include "vbscript/intrinsics/Context.hpp"

namespace hearthmake::vbscript {

class Drive;
class Drives;
class File;
class Folder;
class TextStream;

// Scripting.FileSystemObject: what scripts do with files, by DOS path, over the FileSystem port.
// Errors: 53 "File not found", 58 "File already exists", 68 "Device unavailable", 70 "Permission denied",
// 76 "Path not found", 5 "Invalid procedure call or argument", 52 "Bad file name or number".
class FileSystemObject final : public automation::Object {
 public:
  // The context outlives the object.
  explicit FileSystemObject(Context& context) : m_context(context) {}
  const automation::Interface& Declaration() const override;

  automation::Ref<vbscript::Drives> Drives();
  std::string BuildPath(const std::string& path, const std::string& name);
  std::string GetDriveName(const std::string& path);
  std::string GetParentFolderName(const std::string& path);
  std::string GetFileName(const std::string& path);
  std::string GetBaseName(const std::string& path);
  std::string GetExtensionName(const std::string& path);
  std::string GetAbsolutePathName(const std::string& path);
  // "rad", five hexadecimal digits, ".tmp"; nothing is made.
  std::string GetTempName();
  bool DriveExists(const std::string& drive);
  bool FileExists(const std::string& file);
  bool FolderExists(const std::string& folder);
  automation::Ref<Drive> GetDrive(const std::string& drive);
  automation::Ref<File> GetFile(const std::string& path);
  automation::Ref<Folder> GetFolder(const std::string& path);
  // 0 the Windows folder, 1 the system folder, 2 the one for temporary files.
  automation::Ref<Folder> GetSpecialFolder(std::int32_t which);
  void DeleteFile(const std::string& file, std::optional<bool> force);
  void DeleteFolder(const std::string& folder, std::optional<bool> force);
  void MoveFile(const std::string& source, const std::string& target);
  void MoveFolder(const std::string& source, const std::string& target);
  void CopyFile(const std::string& source, const std::string& target, std::optional<bool> mayReplace);
  void CopyFolder(const std::string& source, const std::string& target, std::optional<bool> mayReplace);
  automation::Ref<Folder> CreateFolder(const std::string& path);
  automation::Ref<TextStream> CreateTextFile(const std::string& path, std::optional<bool> mayReplace,
                                             std::optional<bool> isUnicode);
  automation::Ref<TextStream> OpenTextFile(const std::string& path, std::optional<std::int32_t> mode,
                                           std::optional<bool> mayCreate, std::optional<std::int32_t> format);
  // 0 standard input, 1 output, 2 error. Error 5 where the host has no console.
  automation::Ref<TextStream> GetStandardStream(std::int32_t which, std::optional<bool> isUnicode);
  // "1.2.3.4" of a program or library; "" when it has none.
  std::string GetFileVersion(const std::string& path);

 private:
  platform::FileSystem& Files() { return *m_context.host.Platform().files; }

  Context& m_context;
};

// OpenTextFile and OpenAsTextStream, with their numbers checked.
automation::Ref<TextStream> OpenTextStream(Context& context, const std::string& absolutePath,
                                           std::optional<std::int32_t> mode, bool mayCreate,
                                           std::optional<std::int32_t> format);

// An absolute path; error 5 for an empty one.
std::string AbsolutePath(Context& context, const std::string& path);

}  // namespace hearthmake::vbscript
