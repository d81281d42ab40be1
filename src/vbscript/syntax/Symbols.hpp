#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>

namespace hearthmake::vbscript {

// A name of a script, compared without regard to case: one number for all its spellings, the same in every
// source that one engine compiles.
enum class Symbol : std::uint32_t { None = 0 };

// The names that an engine has met. Symbols are never taken back.
class Symbols {
 public:
  Symbols();
  Symbols(const Symbols&) = delete;
  Symbols& operator=(const Symbols&) = delete;

  Symbol Intern(std::u16string_view name);
  // None when no source has used the name yet.
  Symbol Find(std::u16string_view name) const;
  // The spelling that was met first. Stays where it is as long as the table lives.
  std::u16string_view Spelling(Symbol symbol) const { return m_names[Index(symbol)].spelling; }
  // The same as UTF-8, which is what the members of objects are looked up by.
  const std::string& Utf8(Symbol symbol) const { return m_names[Index(symbol)].utf8; }
  std::size_t Count() const { return m_names.size(); }

 private:
  struct Name {
    std::u16string spelling;
    std::string utf8;
  };
  static std::size_t Index(Symbol symbol) { return static_cast<std::size_t>(symbol); }

  std::deque<Name> m_names;  // a deque, so that spellings stay where they are
  std::unordered_map<std::u16string, Symbol> m_byFoldedName;
};

}  // namespace hearthmake::vbscript
