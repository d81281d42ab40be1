#include "adapters/posix/NameIndex.hpp"

#include <cstdint>
#include <cstring>
#include <string>

#include "adapters/posix/TextEncoding.hpp"
#include "automation/Utf.hpp"

namespace hearthmake::posix {

namespace {

constexpr std::size_t kFirstBuckets = 64;
constexpr std::uint64_t kOnes = 0x0101010101010101;
constexpr std::uint64_t kHighBits = 0x8080808080808080;
constexpr std::uint64_t kMultiplier = 0x9E3779B97F4A7C15;  // odd, with its bits well spread
constexpr std::size_t kWord = sizeof(std::uint64_t);

// Eight characters at a time: names are looked up by the thousand.
std::uint64_t LoadWord(const char* text, std::size_t size) {
  std::uint64_t word = 0;
  if (size >= kWord) {
    std::memcpy(&word, text, kWord);
  } else {
    for (std::size_t i = 0; i < size; ++i)
      word |= std::uint64_t{static_cast<unsigned char>(text[i])} << (8 * i);
  }
  return word;
}

// Upper case. All eight must be ASCII: adding then sets the high bit of just the characters from a limit on.
std::uint64_t UpperCase(std::uint64_t word) {
  const std::uint64_t fromA = word + kOnes * (0x80 - 'a');
  const std::uint64_t behindZ = word + kOnes * (0x80 - 'z' - 1);
  return word ^ ((fromA & ~behindZ & kHighBits) >> 2);
}

std::uint64_t Mix(std::uint64_t hash, std::uint64_t word) {
  hash = (hash ^ word) * kMultiplier;
  return hash ^ hash >> 32;
}

std::uint64_t HashOf(std::string_view name, std::uint64_t start) {
  std::uint64_t hash = start;
  for (std::size_t at = 0; at < name.size(); at += kWord) {
    const std::uint64_t word = LoadWord(name.data() + at, name.size() - at);
    if ((word & kHighBits) != 0) {
      // Folded once, its words are taken as they are: what is not ASCII stays so.
      const std::string folded = FoldCase(name);
      hash = start;
      for (std::size_t i = 0; i < folded.size(); i += kWord)
        hash = Mix(hash, LoadWord(folded.data() + i, folded.size() - i));
      return hash;
    }
    hash = Mix(hash, UpperCase(word));
  }
  return Mix(hash, name.size());
}

bool IsSameName(std::string_view left, std::string_view right) {
  if (left == right) return true;
  const bool isPlain = automation::IsAscii(left) && automation::IsAscii(right);
  if (!isPlain) return FoldCase(left) == FoldCase(right);
  if (left.size() != right.size()) return false;
  for (std::size_t at = 0; at < left.size(); at += kWord)
    if (UpperCase(LoadWord(left.data() + at, left.size() - at)) !=
        UpperCase(LoadWord(right.data() + at, right.size() - at)))
      return false;
  return true;
}

}  // namespace

NameIndex::Sought::Sought(const void* ownerOfIt, std::string_view nameOfIt)
    : owner(ownerOfIt),
      name(nameOfIt),
      hash(static_cast<std::size_t>(HashOf(name, reinterpret_cast<std::uintptr_t>(owner) * kMultiplier))) {}

NameIndex::NameIndex() : m_buckets(kFirstBuckets) {}

NameIndex::Entry* NameIndex::Find(const Sought& sought) const {
  for (Entry* entry = m_buckets[sought.hash & (m_buckets.size() - 1)]; entry != nullptr;
       entry = entry->nextInBucket)
    if (entry->hash == sought.hash && entry->owner == sought.owner && IsSameName(entry->name, sought.name))
      return entry;
  return nullptr;
}

void NameIndex::Add(Entry& entry, const Sought& sought, std::string_view name) {
  if (m_count == m_buckets.size()) Grow();
  Entry*& bucket = Bucket(sought.hash);
  entry = {sought.owner, name, sought.hash, bucket};
  bucket = &entry;
  ++m_count;
}

void NameIndex::Remove(const Entry& entry) {
  Entry** link = &Bucket(entry.hash);
  while (*link != &entry) link = &(*link)->nextInBucket;
  *link = entry.nextInBucket;
  --m_count;
}

void NameIndex::Grow() {
  std::vector<Entry*> old(m_buckets.size() * 2);
  old.swap(m_buckets);
  for (Entry* entry : old) {
    while (entry != nullptr) {
      Entry* const next = entry->nextInBucket;
      Entry*& bucket = Bucket(entry->hash);
      entry->nextInBucket = bucket;
      bucket = entry;
      entry = next;
    }
  }
}

}  // namespace hearthmake::posix
