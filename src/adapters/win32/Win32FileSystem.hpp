#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/FileSystem.hpp"

namespace hearthmake::win32 {

// The FileSystem port over the system's own files.
//
// - Paths of any length work, also where the system's old limit is in force.
// - Files are opened so that others may read, write, replace and remove them meanwhile.
// - A file is one on a disk. Pipes and devices ("nul", "com1") are refused with error 75 where one is opened.
// - Replace keeps permissions, attributes and time of creation, Copy takes over attributes and the time of
//   modification. What holds a fresh file for a moment, as virus scanners do, is waited for.
class Win32FileSystem final : public platform::FileSystem {
 public:
  bool FileExists(std::string_view path) override;
  bool FolderExists(std::string_view path) override;
  platform::FileStamp Stamp(std::string_view path) override;
  platform::FileDetails Details(std::string_view path) override;
  std::uint32_t Attributes(std::string_view path) override;
  void SetAttributes(std::string_view path, std::uint32_t attributes) override;
  // Error 7 for a file of more than 2 GB.
  std::string Read(std::string_view path) override;
  std::string ReadOrCreate(std::string_view path) override;
  std::unique_ptr<platform::RandomAccessFile> Open(std::string_view path) override;
  void Replace(std::string_view path, std::string_view bytes) override;
  // All the bytes, or none when the disk is full.
  void Append(std::string_view path, std::string_view bytes) override;
  std::unique_ptr<platform::OutputStream> OpenForWriting(std::string_view path,
                                                         const platform::WriteMode& mode) override;
  void Remove(std::string_view path) override;
  // Error 70 when both are the same file.
  void Copy(std::string_view from, std::string_view to) override;
  // Error 58 when there is a file or folder of the new name; a new spelling of the same name is fine.
  // A file may move to another drive, a folder that would have to is error 75.
  void Rename(std::string_view from, std::string_view to) override;
  void CreateFolders(std::string_view path) override;
  void CreateFolder(std::string_view path) override;
  // Error 75 when it is not empty.
  void RemoveFolder(std::string_view path) override;
  std::vector<platform::FolderEntry> List(std::string_view folder) override;
  std::string CurrentFolder() override;
  void SetCurrentFolder(std::string_view path) override;
  std::string DriveLetters() override;
  platform::VolumeDetails Volume(char letter) override;
};

}  // namespace hearthmake::win32
