#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/FileSystem.hpp"

namespace hearthmake::host {

// The files of another file system, with what is written kept in memory: the disk stays as it is. Files can
// be replaced, appended to, copied, renamed and removed; attributes are taken and forgotten. Making folders,
// writing piece by piece and moving the current folder are refused with error 70. Listings are those of the
// disk.
class OverlayFiles final : public platform::FileSystem {
 public:
  explicit OverlayFiles(std::shared_ptr<platform::FileSystem> disk);

  bool FileExists(std::string_view path) override;
  bool FolderExists(std::string_view path) override;
  platform::FileStamp Stamp(std::string_view path) override;
  platform::FileDetails Details(std::string_view path) override;
  std::uint32_t Attributes(std::string_view path) override;
  void SetAttributes(std::string_view path, std::uint32_t attributes) override;
  std::string Read(std::string_view path) override;
  std::string ReadOrCreate(std::string_view path) override;
  std::unique_ptr<platform::RandomAccessFile> Open(std::string_view path) override;
  void Replace(std::string_view path, std::string_view bytes) override;
  void Append(std::string_view path, std::string_view bytes) override;
  std::unique_ptr<platform::OutputStream> OpenForWriting(std::string_view path,
                                                         const platform::WriteMode& mode) override;
  void Remove(std::string_view path) override;
  void Copy(std::string_view from, std::string_view to) override;
  void Rename(std::string_view from, std::string_view to) override;
  void CreateFolders(std::string_view path) override;
  void CreateFolder(std::string_view path) override;
  void RemoveFolder(std::string_view path) override;
  std::vector<platform::FolderEntry> List(std::string_view folder) override;
  std::string CurrentFolder() override;
  void SetCurrentFolder(std::string_view path) override;
  std::string DriveLetters() override;
  platform::VolumeDetails Volume(char letter) override;

 private:
  // What became of a file here; null while it is as on the disk. Nothing in it: removed.
  const std::optional<std::string>* Find(std::string_view path) const;

  std::shared_ptr<platform::FileSystem> m_disk;
  std::map<std::string, std::optional<std::string>> m_files;  // by path, in lower case
};

}  // namespace hearthmake::host
