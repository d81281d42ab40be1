#pragma once

#include <array>
#include <string_view>

#include "vbscript/syntax/Symbols.hpp"

namespace hearthmake::vbscript {

// Finds the symbols of spellings that a source has used a moment ago without folding their case again.
class NameCache {
 public:
  explicit NameCache(Symbols& symbols) : m_symbols(symbols) {}

  // The spelling stays where it is as long as the cache is used.
  Symbol Intern(std::u16string_view spelling) {
    Entry& entry = m_entries[Slot(spelling)];
    if (entry.spelling != spelling) entry = {spelling, m_symbols.Intern(spelling)};
    return entry.symbol;
  }

 private:
  static constexpr std::size_t kEntries = 1024;
  struct Entry {
    std::u16string_view spelling;
    Symbol symbol = Symbol::None;
  };
  static std::size_t Slot(std::u16string_view spelling) {
    std::uint32_t hash = 2166136261u;  // FNV-1a
    for (const char16_t unit : spelling) hash = (hash ^ unit) * 16777619u;
    return (hash >> 10) % kEntries;
  }

  Symbols& m_symbols;
  std::array<Entry, kEntries> m_entries{};
};

}  // namespace hearthmake::vbscript
