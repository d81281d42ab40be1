#pragma once

#include <sys/stat.h>

#include <cstddef>
#include <cstdint>
#include <ctime>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace hearthmake::posix {

// Finds names in folders without regard to case, and remembers the folders that it had to read until
// they change. Safe to use from several threads.
class FolderListings {
 public:
  // The name as the folder spells it: this very spelling when it is there, else the first, in the
  // order of bytes, of those that differ in case only. Nothing when there is none or the folder can't
  // be read. `status` is what stat says of the folder now.
  std::optional<std::string> Find(const std::string& folder, const struct stat& status,
                                  std::string_view name);

 private:
  // What a folder has to keep for a listing of it to stay true.
  struct Version {
    std::int64_t modified = 0;  // nanoseconds since 1970
    std::int64_t changed = 0;

    friend bool operator==(const Version&, const Version&) = default;
  };
  struct Identity {
    dev_t device = 0;
    ino_t inode = 0;

    friend bool operator==(const Identity&, const Identity&) = default;
  };
  struct IdentityHash {
    std::size_t operator()(const Identity& identity) const;
  };
  struct Entry {
    std::uint32_t hash = 0;
    std::uint32_t offset = 0;  // of the name in Listing::names
  };
  struct Listing {
    Version version;
    // False when the folder may have changed after it was read without a new time stamp: such a
    // listing answers one question and is not remembered.
    bool settled = false;
    std::string names;  // each closed by a zero byte
    bool indexed = false;
    std::vector<Entry> entries;  // the index: in the order of their hashes

    std::size_t Bytes() const { return sizeof(Listing) + names.size() + entries.size() * sizeof(Entry); }
  };

  static Version VersionOf(const struct stat& status);
  static bool IsSettled(const Version& version, const timespec& now);
  static std::optional<Listing> Read(const std::string& folder);
  static std::optional<std::string> LookUp(const Listing& listing, std::string_view name);
  static std::optional<std::string> Scan(const Listing& listing, std::string_view name);
  void AddIndex(Listing& listing);
  void Remember(const Identity& identity, Listing listing);

  std::mutex m_mutex;
  std::unordered_map<Identity, Listing, IdentityHash> m_listings;
  std::size_t m_bytes = 0;
};

}  // namespace hearthmake::posix
