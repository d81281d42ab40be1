#include "host/dryrun/OverlayFiles.hpp"

#include <algorithm>
#include <cstring>
#include <utility>

#include "automation/Error.hpp"
#include "automation/Text.hpp"

namespace hearthmake::host {

namespace {

using automation::RuntimeError;

class MemoryFile final : public platform::RandomAccessFile {
 public:
  explicit MemoryFile(std::string bytes) : m_bytes(std::move(bytes)) {}
  std::uint64_t Size() const override { return m_bytes.size(); }
  std::size_t Read(std::uint64_t offset, void* buffer, std::size_t count) override {
    if (offset >= m_bytes.size()) return 0;
    const auto start = static_cast<std::size_t>(offset);
    const std::size_t got = std::min(count, m_bytes.size() - start);
    std::memcpy(buffer, m_bytes.data() + start, got);
    return got;
  }

 private:
  std::string m_bytes;
};

[[noreturn]] void RaiseMissing(std::string_view path) {
  automation::Raise(RuntimeError::FileNotFound, "FileSystem", std::string(path));
}

[[noreturn]] void Refuse(std::string_view path) {
  automation::Raise(RuntimeError::PermissionDenied, "FileSystem", std::string(path));
}

}  // namespace

OverlayFiles::OverlayFiles(std::shared_ptr<platform::FileSystem> disk) : m_disk(std::move(disk)) {}

const std::optional<std::string>* OverlayFiles::Find(std::string_view path) const {
  const auto found = m_files.find(automation::Lower(path));
  return found == m_files.end() ? nullptr : &found->second;
}

bool OverlayFiles::FileExists(std::string_view path) {
  const auto* here = Find(path);
  return here != nullptr ? here->has_value() : m_disk->FileExists(path);
}

platform::FileStamp OverlayFiles::Stamp(std::string_view path) {
  const auto* here = Find(path);
  if (here == nullptr) return m_disk->Stamp(path);
  platform::FileStamp stamp;
  if (*here) stamp.size = static_cast<std::int64_t>((*here)->size());
  return stamp;
}

platform::FileDetails OverlayFiles::Details(std::string_view path) {
  const auto* here = Find(path);
  if (here == nullptr) return m_disk->Details(path);
  if (!*here) RaiseMissing(path);
  platform::FileDetails details;
  details.size = (*here)->size();
  return details;
}

std::uint32_t OverlayFiles::Attributes(std::string_view path) {
  const auto* here = Find(path);
  if (here == nullptr) return m_disk->Attributes(path);
  if (!*here) RaiseMissing(path);
  return platform::kNormal;
}

void OverlayFiles::SetAttributes(std::string_view path, std::uint32_t /*attributes*/) { Attributes(path); }

std::string OverlayFiles::Read(std::string_view path) {
  const auto* here = Find(path);
  if (here == nullptr) return m_disk->Read(path);
  if (!*here) RaiseMissing(path);
  return **here;
}

std::string OverlayFiles::ReadOrCreate(std::string_view path) {
  if (!FileExists(path)) Replace(path, "");
  return Read(path);
}

std::unique_ptr<platform::RandomAccessFile> OverlayFiles::Open(std::string_view path) {
  if (Find(path) == nullptr) return m_disk->Open(path);
  return std::make_unique<MemoryFile>(Read(path));
}

void OverlayFiles::Replace(std::string_view path, std::string_view bytes) {
  m_files[automation::Lower(path)] = std::string(bytes);
}

void OverlayFiles::Append(std::string_view path, std::string_view bytes) {
  Replace(path, ReadOrCreate(path).append(bytes));
}

void OverlayFiles::Remove(std::string_view path) {
  if (!FileExists(path)) RaiseMissing(path);
  m_files[automation::Lower(path)] = std::nullopt;
}

void OverlayFiles::Copy(std::string_view from, std::string_view to) { Replace(to, Read(from)); }

void OverlayFiles::Rename(std::string_view from, std::string_view to) {
  if (FileExists(to)) automation::Raise(RuntimeError::FileAlreadyExists, "FileSystem", std::string(to));
  Copy(from, to);
  Remove(from);
}

std::unique_ptr<platform::OutputStream> OverlayFiles::OpenForWriting(std::string_view path,
                                                                     const platform::WriteMode& /*mode*/) {
  Refuse(path);
}

void OverlayFiles::CreateFolders(std::string_view path) {
  if (!FolderExists(path)) Refuse(path);
}
void OverlayFiles::CreateFolder(std::string_view path) { Refuse(path); }
void OverlayFiles::RemoveFolder(std::string_view path) { Refuse(path); }
void OverlayFiles::SetCurrentFolder(std::string_view path) { Refuse(path); }

bool OverlayFiles::FolderExists(std::string_view path) { return m_disk->FolderExists(path); }
std::vector<platform::FolderEntry> OverlayFiles::List(std::string_view folder) {
  return m_disk->List(folder);
}
std::string OverlayFiles::CurrentFolder() { return m_disk->CurrentFolder(); }
std::string OverlayFiles::DriveLetters() { return m_disk->DriveLetters(); }
platform::VolumeDetails OverlayFiles::Volume(char letter) { return m_disk->Volume(letter); }

}  // namespace hearthmake::host
