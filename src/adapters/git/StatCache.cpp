#include "adapters/git/StatCache.hpp"

#include <fcntl.h>

#include <algorithm>
#include <array>
#include <cstring>

#include "adapters/git/FileHandle.hpp"
#include "adapters/git/GitFailure.hpp"
#include "adapters/git/NewFile.hpp"
#include "adapters/git/WriteLock.hpp"

namespace hearthmake::git {

namespace {

constexpr std::string_view kMagic = "hearthmake folder 1\n";
constexpr std::int64_t kTick = 20'000'000;  // nanoseconds; disks stamp files by a coarse clock
constexpr std::int64_t kNanoseconds = 1'000'000'000;

// Of eight bytes at a time: it finds damage, not malice.
std::uint64_t Checksum(std::string_view bytes) {
  std::uint64_t sum = 0xCBF29CE484222325U;
  for (; !bytes.empty(); bytes.remove_prefix(std::min<std::size_t>(8, bytes.size()))) {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes.data(), std::min<std::size_t>(8, bytes.size()));
    sum = (sum ^ word) * 0x9E3779B97F4A7C15U;
    sum ^= sum >> 29U;
  }
  return sum;
}

template <class T>
void Append(std::string& bytes, const T& value) {
  bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
}

// Takes a value off the front; false when there are too few bytes.
template <class T>
bool Take(std::string_view& bytes, T& value) {
  if (bytes.size() < sizeof value) return false;
  std::memcpy(&value, bytes.data(), sizeof value);
  bytes.remove_prefix(sizeof value);
  return true;
}

std::int64_t Nanoseconds(const timespec& time) { return time.tv_sec * kNanoseconds + time.tv_nsec; }

std::string FileFor(const std::string& repositoryFolder, const std::string& folder) {
  git_oid id{};
  git_odb_hash(&id, folder.data(), folder.size(), GIT_OBJECT_BLOB);
  std::array<char, GIT_OID_HEXSZ + 1> hex{};
  return repositoryFolder + "/hearthmake/folders/" + git_oid_tostr(hex.data(), hex.size(), &id);
}

std::string ReadAll(const std::string& path) {
  const FileHandle file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
  struct stat status {};
  if (!file || fstat(file.Get(), &status) != 0 || !S_ISREG(status.st_mode)) return {};
  std::string bytes(static_cast<std::size_t>(status.st_size), '\0');
  std::size_t done = 0;
  while (done < bytes.size()) {
    const ssize_t count = read(file.Get(), bytes.data() + done, bytes.size() - done);
    if (count <= 0) return {};
    done += static_cast<std::size_t>(count);
  }
  return bytes;
}

}  // namespace

FileStatus FileStatus::Of(const struct stat& status) {
  return {status.st_size, Nanoseconds(status.st_mtim), Nanoseconds(status.st_ctim), status.st_ino};
}

StatCache::StatCache(const std::string& repositoryFolder, const std::string& folder) {
  const std::string file = FileFor(repositoryFolder, folder);
  *this = Parse(ReadAll(file));
  m_file = file;
}

bool StatCache::IsCertain(const FileStatus& status) const {
  return std::max(status.modified, status.changed) < m_saved - kTick;
}

const git_oid* StatCache::Find(const std::string& path, const FileStatus& status) const {
  const auto found = m_entries.find(path);
  if (found == m_entries.end() || found->second.status != status || !IsCertain(status)) return nullptr;
  return &found->second.id;
}

void StatCache::Put(const std::string& path, const FileStatus& status, const git_oid& id) {
  m_entries.insert_or_assign(path, Entry{status, id});
  m_isChanged = true;
}

void StatCache::Drop(const std::string& path) { m_isChanged = m_entries.erase(path) > 0 || m_isChanged; }

void StatCache::Save() {
  if (!m_isChanged) return;
  try {
    const std::string folder = OwnFolder(m_file.substr(0, m_file.rfind("/hearthmake/")), "folders");
    const FileHandle opened(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    NewFile file(opened.Get(), 0666, m_file);
    timespec now{};
    clock_gettime(CLOCK_REALTIME_COARSE, &now);
    m_saved = Nanoseconds(now);
    const std::string bytes = Print();
    file.Write(bytes.data(), bytes.size());
    file.Commit(m_file.substr(m_file.rfind('/') + 1));
    m_isChanged = false;
  } catch (const automation::Error&) {  // somebody else's repository: next time the files are read
  }
}

std::string StatCache::Print() const {
  std::string bytes(kMagic);
  bytes.reserve(m_entries.size() * 120);
  Append(bytes, m_saved);
  for (const auto& [path, entry] : m_entries) {
    Append(bytes, static_cast<std::uint32_t>(path.size()));
    bytes += path;
    Append(bytes, entry.status.size);
    Append(bytes, entry.status.modified);
    Append(bytes, entry.status.changed);
    Append(bytes, entry.status.inode);
    bytes.append(reinterpret_cast<const char*>(entry.id.id), sizeof entry.id.id);
  }
  Append(bytes, Checksum(bytes));
  return bytes;
}

StatCache StatCache::Parse(std::string_view bytes) {
  StatCache cache;
  std::uint64_t sum = 0;
  if (bytes.size() < kMagic.size() + sizeof sum || !bytes.starts_with(kMagic)) return cache;
  std::string_view end = bytes.substr(bytes.size() - sizeof sum);
  bytes.remove_suffix(sizeof sum);
  if (!Take(end, sum) || sum != Checksum(bytes)) return cache;
  bytes.remove_prefix(kMagic.size());
  bool isWhole = Take(bytes, cache.m_saved);
  cache.m_entries.reserve(bytes.size() / 80);
  while (isWhole && !bytes.empty()) {
    std::uint32_t length = 0;
    Entry entry;
    isWhole = Take(bytes, length) && length <= bytes.size();
    if (!isWhole) break;
    std::string path(bytes.substr(0, length));
    bytes.remove_prefix(length);
    isWhole = Take(bytes, entry.status.size) && Take(bytes, entry.status.modified) &&
              Take(bytes, entry.status.changed) && Take(bytes, entry.status.inode) &&
              Take(bytes, entry.id.id);
    // One saved in the tick of its file's change must not become certain by being saved again, unread.
    if (isWhole && cache.IsCertain(entry.status)) cache.m_entries.emplace(std::move(path), entry);
  }
  if (!isWhole) cache.m_entries.clear();
  return cache;
}

}  // namespace hearthmake::git
