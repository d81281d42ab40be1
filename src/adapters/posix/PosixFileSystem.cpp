#include "adapters/posix/PosixFileSystem.hpp"

#include <dirent.h>
#include <fcntl.h>
#include <limits.h>
#include <stdio.h>
#include <sys/vfs.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>
#include <optional>
#include <utility>

#include "adapters/posix/DescriptorStreams.hpp"
#include "adapters/posix/FileFailure.hpp"
#include "adapters/posix/FileName.hpp"
#include "adapters/posix/ReplacementFile.hpp"
#include "automation/Error.hpp"
#include "automation/OleDate.hpp"

namespace hearthmake::posix {

namespace {

using automation::RuntimeError;
using platform::FileStamp;
using platform::FolderEntry;

// Opening must not wait for the other end of a pipe, nor make a terminal ours.
constexpr int kOpenFlags = O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
constexpr mode_t kNewFileMode = 0666;
constexpr mode_t kNewFolderMode = 0777;
constexpr std::size_t kChunk = 64U << 10U;
// What a string of Visual Basic could hold at most.
constexpr off_t kLargestText = std::numeric_limits<std::int32_t>::max();

bool IsMissing(int error) { return error == ENOENT || error == ENOTDIR; }

bool IsReadOnly(const struct stat& status) { return (status.st_mode & S_IWUSR) == 0; }

std::string_view LastName(std::string_view posixPath) { return posixPath.substr(posixPath.rfind('/') + 1); }

void RequireFile(const struct stat& status, std::string_view dosPath) {
  if (!S_ISREG(status.st_mode)) RaiseFileFailure(RuntimeError::PathFileAccess, dosPath);
}

void RequireWritableFile(const struct stat& status, std::string_view dosPath) {
  RequireFile(status, dosPath);
  if (IsReadOnly(status)) RaiseFileFailure(RuntimeError::PathFileAccess, dosPath);
}

struct stat StatusOf(const FileDescriptor& file, std::string_view dosPath) {
  struct stat status {};
  if (fstat(file.Get(), &status) != 0) RaiseErrno(errno, dosPath);
  return status;
}

std::string ReadAll(const FileDescriptor& file, std::string_view dosPath) {
  const struct stat status = StatusOf(file, dosPath);
  RequireFile(status, dosPath);
  if (status.st_size > kLargestText) RaiseFileFailure(RuntimeError::OutOfMemory, dosPath);
  std::string bytes;
  // A file of /proc has size 0 and yet content: read on until there is no more.
  std::size_t room = status.st_size > 0 ? static_cast<std::size_t>(status.st_size) : kChunk;
  do {
    const std::size_t before = bytes.size();
    if (before + room > static_cast<std::size_t>(kLargestText)) {
      RaiseFileFailure(RuntimeError::OutOfMemory, dosPath);
    }
    try {
      bytes.resize(before + room);
    } catch (const std::bad_alloc&) {
      RaiseFileFailure(RuntimeError::OutOfMemory, dosPath);
    }
    const ssize_t got = file.ReadFully(bytes.data() + before, room);
    if (got < 0) RaiseErrno(errno, dosPath);
    bytes.resize(before + static_cast<std::size_t>(got));
    if (static_cast<std::size_t>(got) < room) break;
  } while (status.st_size == 0);
  return bytes;
}

double LocalOleDate(std::int64_t seconds) {
  const std::time_t time = seconds;
  std::tm local{};
  localtime_r(&time, &local);
  return automation::JoinDate({local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour,
                               local.tm_min, std::min(local.tm_sec, 59)});
}

// What statfs calls the kinds of file systems that are worth a name.
const char* FileSystemName(std::uint64_t magic) {
  struct Name {
    std::uint64_t magic;
    const char* name;
  };
  static constexpr Name kNames[] = {
      {0xEF53, "ext4"},        {0x58465342, "XFS"},   {0x9123683E, "Btrfs"}, {0x01021994, "tmpfs"},
      {0x794C7630, "overlay"}, {0x6969, "NFS"},       {0xFF534D42, "CIFS"},  {0xFE534D42, "SMB2"},
      {0x4D44, "FAT"},         {0x2011BAB0, "exFAT"}, {0x5346544E, "NTFS"},  {0x7366746E, "NTFS"},
      {0x9660, "CDFS"},        {0x15013346, "UDF"},   {0x2FC12FC1, "ZFS"},   {0x65735546, "FUSE"},
  };
  for (const Name& entry : kNames) {
    if (entry.magic == magic) return entry.name;
  }
  return "";
}

platform::VolumeKind KindOf(std::string_view fileSystem) {
  if (fileSystem == "NFS" || fileSystem == "CIFS" || fileSystem == "SMB2")
    return platform::VolumeKind::Network;
  if (fileSystem == "CDFS" || fileSystem == "UDF") return platform::VolumeKind::CdRom;
  return fileSystem == "tmpfs" ? platform::VolumeKind::RamDisk : platform::VolumeKind::Fixed;
}

// The failure of opening an existing file for writing: only root gets past a read-only one, to be
// refused later.
[[noreturn]] void RaiseNotWritable(int error, std::string_view dosPath, const std::string& posixPath) {
  struct stat status {};
  if (error == EACCES && stat(posixPath.c_str(), &status) == 0) RequireWritableFile(status, dosPath);
  RaiseFileErrno(error, dosPath, posixPath);
}

bool HasBytes(const FileDescriptor& file, const struct stat& status, std::string_view bytes) {
  if (static_cast<std::uint64_t>(status.st_size) != bytes.size()) return false;
  std::array<char, kChunk> buffer;
  while (!bytes.empty()) {
    const std::size_t count = std::min(bytes.size(), buffer.size());
    if (file.ReadFully(buffer.data(), count) != static_cast<ssize_t>(count)) return false;
    if (std::memcmp(buffer.data(), bytes.data(), count) != 0) return false;
    bytes.remove_prefix(count);
  }
  return true;
}

// Where a rename has to go so that a link stays one.
std::string BehindLinks(const std::string& path) {
  std::array<char, PATH_MAX> resolved{};
  return realpath(path.c_str(), resolved.data()) != nullptr ? resolved.data() : path;
}

// False with errno set; EEXIST when the new name is taken.
bool RenameWithoutReplacing(const std::string& from, const std::string& to) {
  if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return true;
  if (errno != EINVAL && errno != ENOSYS) return false;
  // Not every file system can do it in one step.
  struct stat status {};
  if (lstat(to.c_str(), &status) == 0) {
    errno = EEXIST;
    return false;
  }
  return rename(from.c_str(), to.c_str()) == 0;
}

class OpenFile : public platform::RandomAccessFile {
 public:
  OpenFile(FileDescriptor file, std::uint64_t size, std::string dosPath)
      : m_file(std::move(file)), m_size(size), m_dosPath(std::move(dosPath)) {}

  std::uint64_t Size() const override { return m_size; }

  std::size_t Read(std::uint64_t offset, void* buffer, std::size_t count) override {
    std::size_t done = 0;
    while (done < count && offset + done < m_size) {
      const ssize_t got = pread(m_file.Get(), static_cast<char*>(buffer) + done, count - done,
                                static_cast<off_t>(offset + done));
      if (got < 0 && errno == EINTR) continue;
      if (got < 0) RaiseErrno(errno, m_dosPath);
      if (got == 0) break;
      done += static_cast<std::size_t>(got);
    }
    return done;
  }

 private:
  FileDescriptor m_file;
  std::uint64_t m_size;
  std::string m_dosPath;
};

struct CloseFolder {
  void operator()(DIR* folder) const { closedir(folder); }
};

bool IsFolderEntry(DIR* folder, const dirent& entry) {
  if (entry.d_type != DT_UNKNOWN && entry.d_type != DT_LNK) return entry.d_type == DT_DIR;
  struct stat status {};
  return fstatat(dirfd(folder), entry.d_name, &status, 0) == 0 && S_ISDIR(status.st_mode);
}

}  // namespace

PosixFileSystem::PosixFileSystem(std::shared_ptr<const DriveMap> drives) : m_drives(std::move(drives)) {}

template <class Attempt>
PosixFileSystem::Place PosixFileSystem::TryAt(std::string_view path, Attempt attempt) const {
  std::optional<std::string> spelled = m_drives->ToPosixAsSpelled(path);
  if (!spelled) return {"", ENOENT};
  const int error = attempt(*spelled);
  if (!IsMissing(error)) return {std::move(*spelled), error};
  std::optional<std::string> resolved = m_drives->ToPosix(path);
  if (!resolved || *resolved == *spelled) return {std::move(*spelled), error};
  const int secondError = attempt(*resolved);
  return {std::move(*resolved), secondError};
}

PosixFileSystem::Found PosixFileSystem::Look(std::string_view path) const {
  Found found;
  found.place = TryAt(path, [&found](const std::string& posixPath) {
    return stat(posixPath.c_str(), &found.status) == 0 ? 0 : errno;
  });
  return found;
}

PosixFileSystem::Opened PosixFileSystem::OpenExisting(std::string_view path, int flags) const {
  Opened opened;
  opened.place = TryAt(path, [&opened, flags](const std::string& posixPath) {
    opened.file.Reset(open(posixPath.c_str(), flags | kOpenFlags));
    return opened.file ? 0 : errno;
  });
  return opened;
}

PosixFileSystem::Opened PosixFileSystem::OpenForReading(std::string_view path) const {
  Opened opened = OpenExisting(path, O_RDONLY);
  if (!opened.file) RaiseFileErrno(opened.place.error, path, opened.place.path);
  return opened;
}

bool PosixFileSystem::FileExists(std::string_view path) {
  const Found found = Look(path);
  return found.Exists() && S_ISREG(found.status.st_mode);
}

bool PosixFileSystem::FolderExists(std::string_view path) {
  const Found found = Look(path);
  return found.Exists() && S_ISDIR(found.status.st_mode);
}

FileStamp PosixFileSystem::Stamp(std::string_view path) {
  const Found found = Look(path);
  if (!found.Exists() || !S_ISREG(found.status.st_mode)) return {};
  constexpr std::int64_t kSecond = 1'000'000'000;
  const struct stat& status = found.status;
  // Inodes are unique on one device only; the odd factor keeps those of two devices apart.
  return {status.st_ino + status.st_dev * 0x9E3779B97F4A7C15U, status.st_size,
          status.st_mtim.tv_sec * kSecond + status.st_mtim.tv_nsec};
}

std::uint32_t PosixFileSystem::AttributesOf(const Found& found) {
  std::uint32_t attributes = platform::kNormal;
  if (LastName(found.place.path).starts_with('.')) attributes |= platform::kHidden;
  if (S_ISDIR(found.status.st_mode)) return attributes | platform::kFolder;
  return IsReadOnly(found.status) ? attributes | platform::kReadOnly : attributes;
}

platform::FileDetails PosixFileSystem::Details(std::string_view path) {
  const Found found = Look(path);
  if (!found.Exists()) RaiseFileErrno(found.place.error, path, found.place.path);
  const struct stat& status = found.status;
  platform::FileDetails details;
  details.isFolder = S_ISDIR(status.st_mode);
  details.attributes = AttributesOf(found);
  details.size = details.isFolder ? 0 : static_cast<std::uint64_t>(status.st_size);
  details.accessed = LocalOleDate(status.st_atim.tv_sec);
  details.modified = LocalOleDate(status.st_mtim.tv_sec);
  struct statx more {};
  const bool hasBirth = statx(AT_FDCWD, found.place.path.c_str(), 0, STATX_BTIME, &more) == 0 &&
                        (more.stx_mask & STATX_BTIME) != 0;
  details.created = LocalOleDate(hasBirth ? more.stx_btime.tv_sec : status.st_mtim.tv_sec);
  return details;
}

std::uint32_t PosixFileSystem::Attributes(std::string_view path) {
  const Found found = Look(path);
  if (!found.Exists()) RaiseFileErrno(found.place.error, path, found.place.path);
  return AttributesOf(found);
}

void PosixFileSystem::SetAttributes(std::string_view path, std::uint32_t attributes) {
  const Found found = Look(path);
  if (!found.Exists()) RaiseFileErrno(found.place.error, path, found.place.path);
  if (!S_ISREG(found.status.st_mode)) return;
  const bool readOnly = (attributes & platform::kReadOnly) != 0;
  if (readOnly == IsReadOnly(found.status)) return;
  const mode_t mode = found.status.st_mode & 07777U;
  constexpr mode_t kEveryWrite = S_IWUSR | S_IWGRP | S_IWOTH;
  if (chmod(found.place.path.c_str(), readOnly ? mode & ~kEveryWrite : mode | S_IWUSR) != 0) {
    RaiseErrno(errno, path);
  }
}

std::string PosixFileSystem::Read(std::string_view path) { return ReadAll(OpenForReading(path).file, path); }

std::string PosixFileSystem::ReadOrCreate(std::string_view path) {
  Opened opened = OpenExisting(path, O_RDONLY);
  if (!opened.file && opened.place.error == ENOENT) {
    opened.file.Reset(open(opened.place.path.c_str(), O_RDWR | O_CREAT | kOpenFlags, kNewFileMode));
    opened.place.error = errno;
  }
  if (!opened.file) RaiseFileErrno(opened.place.error, path, opened.place.path);
  return ReadAll(opened.file, path);
}

std::unique_ptr<platform::RandomAccessFile> PosixFileSystem::Open(std::string_view path) {
  Opened opened = OpenForReading(path);
  const struct stat status = StatusOf(opened.file, path);
  RequireFile(status, path);
  return std::make_unique<OpenFile>(std::move(opened.file), static_cast<std::uint64_t>(status.st_size),
                                    std::string(path));
}

void PosixFileSystem::Replace(std::string_view path, std::string_view bytes) {
  std::optional<struct stat> old;
  Opened opened = OpenExisting(path, O_RDONLY);
  if (opened.file) {
    old = StatusOf(opened.file, path);
    RequireWritableFile(*old, path);
    if (HasBytes(opened.file, *old, bytes)) return;
    opened.file.Reset();
  } else if (opened.place.error == EACCES) {
    // A file that we may not read can still be replaced.
    struct stat status {};
    if (stat(opened.place.path.c_str(), &status) != 0) RaiseErrno(errno, path);
    RequireWritableFile(status, path);
    old = status;
  } else if (opened.place.error != ENOENT) {
    RaiseErrno(opened.place.error, path);
  }
  if (opened.place.path.empty()) RaiseFileFailure(RuntimeError::PathNotFound, path);
  ReplacementFile replacement(old ? BehindLinks(opened.place.path) : opened.place.path, path, kNewFileMode);
  if (old) replacement.InheritFrom(*old);
  replacement.Write(bytes);
  replacement.Commit();
}

void PosixFileSystem::Append(std::string_view path, std::string_view bytes) {
  constexpr int kFlags = O_WRONLY | O_APPEND;
  Opened opened = OpenExisting(path, kFlags);
  if (!opened.file && opened.place.error == ENOENT) {
    opened.file.Reset(open(opened.place.path.c_str(), kFlags | O_CREAT | kOpenFlags, kNewFileMode));
    opened.place.error = errno;
  }
  if (!opened.file) RaiseNotWritable(opened.place.error, path, opened.place.path);
  const struct stat before = StatusOf(opened.file, path);
  RequireWritableFile(before, path);
  const int error = opened.file.WriteAll(bytes);
  if (error == 0) return;
  [[maybe_unused]] const int ignored = ftruncate(opened.file.Get(), before.st_size);
  RaiseErrno(error, path);
}

std::unique_ptr<platform::OutputStream> PosixFileSystem::OpenForWriting(std::string_view path,
                                                                        const platform::WriteMode& mode) {
  const int flags = O_WRONLY | (mode.isAppended ? O_APPEND : 0);
  Opened opened = OpenExisting(path, flags);
  if (opened.file && !mode.mayReplace) RaiseFileFailure(RuntimeError::FileAlreadyExists, path);
  if (!opened.file && opened.place.error == ENOENT && mode.mayCreate) {
    opened.file.Reset(open(opened.place.path.c_str(), flags | O_CREAT | O_EXCL | kOpenFlags, kNewFileMode));
    opened.place.error = errno;
  }
  if (!opened.file) {
    if (opened.place.error == EACCES && !mode.mayReplace && FileExists(path)) {
      RaiseFileFailure(RuntimeError::FileAlreadyExists, path);
    }
    RaiseNotWritable(opened.place.error, path, opened.place.path);
  }
  RequireWritableFile(StatusOf(opened.file, path), path);
  if (!mode.isAppended && ftruncate(opened.file.Get(), 0) != 0) RaiseErrno(errno, path);
  return std::make_unique<DescriptorOutput>(std::move(opened.file), std::string(path));
}

void PosixFileSystem::Remove(std::string_view path) {
  const Found found = Look(path);
  if (found.Exists()) {
    const bool isReadOnlyFile = S_ISREG(found.status.st_mode) && IsReadOnly(found.status);
    if (isReadOnlyFile || S_ISDIR(found.status.st_mode)) {
      RaiseFileFailure(RuntimeError::PathFileAccess, path);
    }
  }
  // What could not be looked at may be a link to nothing, which can be removed.
  if (unlink(found.place.path.c_str()) != 0) RaiseFileErrno(errno, path, found.place.path);
}

void PosixFileSystem::Copy(std::string_view from, std::string_view to) {
  const Opened source = OpenForReading(from);
  const struct stat status = StatusOf(source.file, from);
  RequireFile(status, from);
  const Found target = Look(to);
  if (target.Exists()) {
    if (target.status.st_dev == status.st_dev && target.status.st_ino == status.st_ino) {
      RaiseFileFailure(RuntimeError::PermissionDenied, to);
    }
    RequireWritableFile(target.status, to);
  } else if (target.place.error != ENOENT || target.place.path.empty()) {
    RaiseErrno(target.place.error, to);
  }
  ReplacementFile copy(target.Exists() ? BehindLinks(target.place.path) : target.place.path, to,
                       status.st_mode & 0777U);
  std::array<char, kChunk> buffer;
  while (true) {
    const ssize_t got = source.file.ReadFully(buffer.data(), buffer.size());
    if (got < 0) RaiseErrno(errno, from);
    copy.Write({buffer.data(), static_cast<std::size_t>(got)});
    if (static_cast<std::size_t>(got) < buffer.size()) break;
  }
  copy.SetModified(status.st_mtim);
  copy.Commit();
}

void PosixFileSystem::Rename(std::string_view from, std::string_view to) {
  const std::string source = Locate(from);
  struct stat status {};
  if (lstat(source.c_str(), &status) != 0) RaiseFileErrno(errno, from, source);
  const std::string target = RenameTarget(to, source);
  if (target == source) return;
  if (RenameWithoutReplacing(source, target)) return;
  if (errno != EXDEV) RaiseFileErrno(errno, to, target);
  if (!S_ISREG(status.st_mode)) RaiseFileFailure(RuntimeError::PathFileAccess, to);
  Copy(from, to);
  if (unlink(source.c_str()) != 0) RaiseErrno(errno, from);
}

void PosixFileSystem::CreateFolders(std::string_view path) {
  const Found found = Look(path);
  if (found.Exists() && S_ISDIR(found.status.st_mode)) return;
  if (found.Exists()) RaiseFileFailure(RuntimeError::PathFileAccess, path);
  const std::string& folder = found.place.path;
  if (folder.empty()) RaiseFileFailure(RuntimeError::PathNotFound, path);
  for (std::size_t end = folder.find('/', 1);; end = folder.find('/', end + 1)) {
    const std::string part = folder.substr(0, end);
    struct stat status {};
    // Folders on the way that exist may lie where we can make none.
    const bool isThere = stat(part.c_str(), &status) == 0;
    if (!isThere && mkdir(part.c_str(), kNewFolderMode) != 0 && errno != EEXIST) RaiseErrno(errno, path);
    if (end == std::string::npos) break;
  }
  // A link to nothing takes the name without being a folder.
  if (!FolderExists(path)) RaiseFileFailure(RuntimeError::PathFileAccess, path);
}

void PosixFileSystem::CreateFolder(std::string_view path) {
  const std::string folder = Locate(path);
  if (mkdir(folder.c_str(), kNewFolderMode) != 0) RaiseErrno(errno, path);
}

void PosixFileSystem::RemoveFolder(std::string_view path) {
  const std::string folder = Locate(path);
  if (rmdir(folder.c_str()) == 0) return;
  const int error = errno;
  struct stat status {};
  const bool isFolder = stat(folder.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
  // A link to a folder goes without what it points to, as a junction does.
  if (error == ENOTDIR && isFolder && unlink(folder.c_str()) == 0) return;
  RaiseErrno(error == EEXIST ? ENOTEMPTY : error, path);
}

std::vector<FolderEntry> PosixFileSystem::List(std::string_view folder) {
  std::unique_ptr<DIR, CloseFolder> stream;
  const Place place = TryAt(folder, [&stream](const std::string& posixPath) {
    stream.reset(opendir(posixPath.c_str()));
    return stream ? 0 : errno;
  });
  if (!stream) RaiseErrno(place.error, folder);
  std::vector<FolderEntry> entries;
  errno = 0;
  while (const dirent* entry = readdir(stream.get())) {
    const std::string_view name = entry->d_name;
    if (name != "." && name != ".." && name.find('\\') == std::string_view::npos) {
      entries.push_back({FileNameToUtf8(name), IsFolderEntry(stream.get(), *entry), entry->d_type == DT_LNK});
    }
    errno = 0;
  }
  if (errno != 0) RaiseErrno(errno, folder);
  return entries;
}

std::string PosixFileSystem::CurrentFolder() {
  std::array<char, PATH_MAX> folder{};
  if (getcwd(folder.data(), folder.size()) == nullptr) RaiseErrno(errno, ".");
  return m_drives->FromPosix(folder.data());
}

void PosixFileSystem::SetCurrentFolder(std::string_view path) {
  const Place place =
      TryAt(path, [](const std::string& posixPath) { return chdir(posixPath.c_str()) == 0 ? 0 : errno; });
  if (place.error != 0) RaiseErrno(place.error, path);
}

std::string PosixFileSystem::DriveLetters() {
  std::string letters;
  for (char letter = 'A'; letter <= 'Z'; ++letter) {
    if (m_drives->Drive(letter)) letters += letter;
  }
  return letters;
}

platform::VolumeDetails PosixFileSystem::Volume(char letter) {
  platform::VolumeDetails details;
  const auto folder = m_drives->Drive(letter);
  if (!folder) return details;
  details.kind = platform::VolumeKind::Fixed;
  struct statfs status {};
  if (statfs(folder->c_str(), &status) != 0) return details;
  const auto block = static_cast<std::uint64_t>(status.f_frsize);
  details.isReady = true;
  details.totalBytes = status.f_blocks * block;
  details.freeBytes = status.f_bfree * block;
  details.availableBytes = status.f_bavail * block;
  details.fileSystem = FileSystemName(static_cast<std::uint32_t>(status.f_type));
  details.kind = KindOf(details.fileSystem);
  std::memcpy(&details.serialNumber, &status.f_fsid, sizeof details.serialNumber);
  return details;
}

std::string PosixFileSystem::Locate(std::string_view path) const {
  std::optional<std::string> posixPath = m_drives->ToPosix(path);
  if (!posixPath) RaiseFileFailure(RuntimeError::PathNotFound, path);
  return std::move(*posixPath);
}

// The new name beside what is there: for a mere change of case the name as it is spelled.
std::string PosixFileSystem::RenameTarget(std::string_view to, const std::string& source) const {
  std::string target = Locate(to);
  if (target != source) return target;
  const std::string spelled = m_drives->ToPosixAsSpelled(to).value_or(target);
  return target.substr(0, target.rfind('/') + 1).append(WithoutTrailingDots(LastName(spelled)));
}

}  // namespace hearthmake::posix
