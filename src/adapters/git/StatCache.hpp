#pragma once

#include <sys/stat.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

#include "adapters/git/LibGit2.hpp"

namespace hearthmake::git {

// What a file's status tells: while it is the same, so is the content.
struct FileStatus {
  std::int64_t size = -1;
  std::int64_t modified = 0;  // nanoseconds since 1970
  std::int64_t changed = 0;   // the same, of anything about the file
  std::uint64_t inode = 0;

  static FileStatus Of(const struct stat& status);
  friend bool operator==(const FileStatus&, const FileStatus&) = default;
};

// What is known of the files of one working folder since the last get, so that they need not be read again.
// It is kept in the repository, below hearthmake/folders, and is no more than a saving: a file that is
// missing, damaged or not ours to write costs time only.
class StatCache {
 public:
  // The folder is the working folder's POSIX path with its links resolved.
  StatCache(const std::string& repositoryFolder, const std::string& folder);

  // The content that the file (its path from the working folder on) has for certain; null when it isn't
  // known.
  const git_oid* Find(const std::string& path, const FileStatus& status) const;
  void Put(const std::string& path, const FileStatus& status, const git_oid& id);
  void Drop(const std::string& path);
  // Does nothing when nothing has changed.
  void Save();

  // The text of a cache file, and what it holds when read again; one that is not whole holds nothing.
  static StatCache Parse(std::string_view bytes);
  std::string Print() const;
  std::size_t Count() const { return m_entries.size(); }

 private:
  struct Entry {
    FileStatus status;
    git_oid id{};
  };

  StatCache() = default;
  // A file that has changed in the same tick of the clock in which the cache was written may change again
  // without another time.
  bool IsCertain(const FileStatus& status) const;

  std::string m_file;
  std::int64_t m_saved = 0;  // when it was written, by the clock of the disk
  bool m_isChanged = false;
  std::unordered_map<std::string, Entry> m_entries;
};

}  // namespace hearthmake::git
