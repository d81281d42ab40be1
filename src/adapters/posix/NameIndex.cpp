#include "adapters/posix/NameIndex.hpp"

#include <cstdint>
#include <cstring>
#include <string>

#include "adapters/posix/TextEncoding.hpp"
#include "automation/Text.hpp"
#include "automation/Utf.hpp"

namespace hearthmake::posix {

namespace {

constexpr std::size_t kFirstBuckets = 64;
constexpr std::uint64_t kOnes = 0x0101010101010101;
constexpr std::uint64_t kHighBits = 0x8080808080808080;
constexpr std::uint64_t kMultiplier = 0x9E3779B97F4A7C15;  // odd, with its bits well spread
constexpr std::size_t kWord = sizeof(std::uint64_t);

template <class Word>
std::uint64_t Load(const char* text) {
  Word word = 0;
  std::memcpy(&word, text, sizeof word);
  return word;
}

// A text of less than eight characters, all of them in one word.
std::uint64_t LoadShort(std::string_view text) {
  if (text.size() >= 4)
    return Load<std::uint32_t>(text.data()) | Load<std::uint32_t>(text.data() + text.size() - 4) << 32;
  if (text.empty()) return 0;
  const auto character = [&](std::size_t at) { return Load<std::uint8_t>(text.data() + at); };
  return character(0) | character(text.size() / 2) << 8 | character(text.size() - 1) << 16;
}

// Calls use(word) for eight characters at a time, the last ones perhaps twice: names are looked up by the
// thousand. Stops when it returns false.
template <class Use>
bool ForWords(std::string_view text, Use use) {
  if (text.size() < kWord) return use(LoadShort(text));
  for (std::size_t at = 0; at + kWord <= text.size(); at += kWord)
    if (!use(Load<std::uint64_t>(text.data() + at))) return false;
  return text.size() % kWord == 0 || use(Load<std::uint64_t>(text.data() + text.size() - kWord));
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
  std::uint64_t hash = start ^ name.size();
  const bool isAscii = ForWords(name, [&](std::uint64_t word) {
    hash = Mix(hash, UpperCase(word));
    return (word & kHighBits) == 0;
  });
  if (isAscii) return hash;
  hash = start;
  ForWords(FoldCase(name), [&](std::uint64_t word) {
    hash = Mix(hash, word);
    return true;
  });
  return hash;
}

bool IsSameName(std::string_view left, std::string_view right) {
  return left == right || (left.size() == right.size() && automation::EqualsIgnoreCaseAscii(left, right)) ||
         (!automation::IsAscii(left) && FoldCase(left) == FoldCase(right));
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
