#include "adapters/posix/FolderListings.hpp"

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <functional>
#include <limits>
#include <memory>
#include <utility>

#include "adapters/posix/FileName.hpp"

namespace hearthmake::posix {

namespace {

// The kernel stamps files with a clock that advances in steps of up to 10 ms, so a folder can change
// twice under one stamp. File systems with whole seconds in their stamps (FAT: two) leave the
// nanoseconds zero.
constexpr std::int64_t kFineGranule = 20'000'000;
constexpr std::int64_t kCoarseGranule = 2'100'000'000;
constexpr std::int64_t kSecond = 1'000'000'000;

// Plenty for every folder of the largest suites; a bound for a scan of a whole machine.
constexpr std::size_t kMostBytes = 64U << 20U;

std::int64_t Nanoseconds(const timespec& time) { return time.tv_sec * kSecond + time.tv_nsec; }

struct CloseFolder {
  void operator()(DIR* folder) const { closedir(folder); }
};

}  // namespace

std::size_t FolderListings::IdentityHash::operator()(const Identity& identity) const {
  return std::hash<std::uint64_t>()(identity.inode * 0x9E3779B97F4A7C15U + identity.device);
}

std::optional<std::string> FolderListings::Find(const std::string& folder, const struct stat& status,
                                                std::string_view name) {
  const Identity identity{status.st_dev, status.st_ino};
  const std::lock_guard lock(m_mutex);
  const auto known = m_listings.find(identity);
  if (known != m_listings.end() && known->second.settled && known->second.version == VersionOf(status)) {
    return Lookup(known->second, name);
  }
  std::optional<Listing> listing = Read(folder);
  if (!listing) return std::nullopt;
  std::optional<std::string> found = Lookup(*listing, name);
  // A folder that has just changed will be read again anyway.
  if (listing->settled) Remember(identity, std::move(*listing));
  return found;
}

FolderListings::Version FolderListings::VersionOf(const struct stat& status) {
  return {Nanoseconds(status.st_mtim), Nanoseconds(status.st_ctim)};
}

bool FolderListings::IsSettled(const Version& version, const timespec& now) {
  const bool coarse = version.modified % kSecond == 0 && version.changed % kSecond == 0;
  const std::int64_t latest = std::max(version.modified, version.changed);
  return Nanoseconds(now) - latest > (coarse ? kCoarseGranule : kFineGranule);
}

std::optional<FolderListings::Listing> FolderListings::Read(const std::string& folder) {
  const std::unique_ptr<DIR, CloseFolder> stream(opendir(folder.c_str()));
  if (!stream) return std::nullopt;
  // Clock and stamp are taken before the names: what changes from here on shows as a newer stamp, or
  // the listing does not count as settled.
  timespec now{};
  struct stat status {};
  if (clock_gettime(CLOCK_REALTIME, &now) != 0 || fstat(dirfd(stream.get()), &status) != 0) {
    return std::nullopt;
  }
  Listing listing;
  listing.version = VersionOf(status);
  listing.settled = IsSettled(listing.version, now);
  while (const dirent* entry = readdir(stream.get())) {
    const std::string_view name = entry->d_name;
    if (name == "." || name == "..") continue;
    if (listing.names.size() > std::numeric_limits<std::uint32_t>::max() - NAME_MAX) return std::nullopt;
    listing.entries.push_back({FoldedHash(name), static_cast<std::uint32_t>(listing.names.size())});
    listing.names.append(name).push_back('\0');
  }
  std::sort(listing.entries.begin(), listing.entries.end(),
            [](const Entry& left, const Entry& right) { return left.hash < right.hash; });
  listing.names.shrink_to_fit();
  listing.entries.shrink_to_fit();
  return listing;
}

std::optional<std::string> FolderListings::Lookup(const Listing& listing, std::string_view name) {
  const std::uint32_t hash = FoldedHash(name);
  auto entry = std::lower_bound(listing.entries.begin(), listing.entries.end(), hash,
                                [](const Entry& left, std::uint32_t right) { return left.hash < right; });
  std::optional<std::string_view> best;
  for (; entry != listing.entries.end() && entry->hash == hash; ++entry) {
    const std::string_view candidate = listing.names.data() + entry->offset;
    if (candidate == name) return std::string(name);
    if ((!best || candidate < *best) && FoldedEqual(candidate, name)) best = candidate;
  }
  if (!best) return std::nullopt;
  return std::string(*best);
}

void FolderListings::Remember(const Identity& identity, Listing listing) {
  if (m_bytes + listing.Bytes() > kMostBytes) {
    m_listings.clear();
    m_bytes = 0;
  }
  Listing& place = m_listings[identity];
  m_bytes = m_bytes - place.Bytes() + listing.Bytes();
  place = std::move(listing);
}

}  // namespace hearthmake::posix
