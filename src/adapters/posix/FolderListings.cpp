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

// Picks the name that a folder knows a spelling by.
class BestMatch {
 public:
  explicit BestMatch(std::string_view wanted) : m_wanted(wanted) {}

  void Consider(std::string_view candidate) {
    if (!FoldedEqual(candidate, m_wanted) || m_best == m_wanted) return;
    if (!m_best || candidate == m_wanted || candidate < *m_best) m_best = candidate;
  }
  std::optional<std::string> Take() const {
    return m_best ? std::optional<std::string>(*m_best) : std::nullopt;
  }

 private:
  std::string_view m_wanted;
  std::optional<std::string_view> m_best;
};

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
  if (known != m_listings.end() && known->second.version == VersionOf(status)) {
    // The first question about a listing was answered by a walk over it; many folders get no second.
    if (!known->second.indexed) AddIndex(known->second);
    return LookUp(known->second, name);
  }
  std::optional<Listing> listing = Read(folder);
  if (!listing) return std::nullopt;
  std::optional<std::string> found = Scan(*listing, name);
  // A folder that has just changed will be read again anyway.
  if (listing->settled) Remember(identity, std::move(*listing));
  return found;
}

FolderListings::Version FolderListings::VersionOf(const struct stat& status) {
  return {Nanoseconds(status.st_mtim), Nanoseconds(status.st_ctim)};
}

bool FolderListings::IsSettled(const Version& version, const timespec& now) {
  const bool coarse = version.modified % kSecond == 0 && version.changed % kSecond == 0;
  // A time of modification can be set to any day, one that is yet to come included; the other can't.
  const bool plausible = version.modified <= Nanoseconds(now);
  const std::int64_t latest = plausible ? std::max(version.modified, version.changed) : version.changed;
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
    listing.names.append(name).push_back('\0');
  }
  listing.names.shrink_to_fit();
  return listing;
}

void FolderListings::AddIndex(Listing& listing) {
  const auto count = std::count(listing.names.begin(), listing.names.end(), '\0');
  listing.entries.reserve(static_cast<std::size_t>(count));
  for (std::size_t offset = 0; offset < listing.names.size();) {
    const std::string_view name = listing.names.data() + offset;
    listing.entries.push_back({FoldedHash(name), static_cast<std::uint32_t>(offset)});
    offset += name.size() + 1;
  }
  std::sort(listing.entries.begin(), listing.entries.end(),
            [](const Entry& left, const Entry& right) { return left.hash < right.hash; });
  listing.indexed = true;
  m_bytes += listing.entries.size() * sizeof(Entry);
}

std::optional<std::string> FolderListings::LookUp(const Listing& listing, std::string_view name) {
  const std::uint32_t hash = FoldedHash(name);
  auto entry = std::lower_bound(listing.entries.begin(), listing.entries.end(), hash,
                                [](const Entry& left, std::uint32_t right) { return left.hash < right; });
  BestMatch match(name);
  for (; entry != listing.entries.end() && entry->hash == hash; ++entry) {
    match.Consider(listing.names.data() + entry->offset);
  }
  return match.Take();
}

std::optional<std::string> FolderListings::Scan(const Listing& listing, std::string_view name) {
  BestMatch match(name);
  for (std::size_t offset = 0; offset < listing.names.size();) {
    const std::string_view candidate = listing.names.data() + offset;
    match.Consider(candidate);
    offset += candidate.size() + 1;
  }
  return match.Take();
}

void FolderListings::Remember(const Identity& identity, Listing listing) {
  if (m_bytes + listing.Bytes() > kMostBytes) {
    m_listings.clear();
    m_bytes = 0;
  }
  const auto [place, isNew] = m_listings.try_emplace(identity);
  if (!isNew) m_bytes -= place->second.Bytes();
  m_bytes += listing.Bytes();
  place->second = std::move(listing);
}

}  // namespace hearthmake::posix
