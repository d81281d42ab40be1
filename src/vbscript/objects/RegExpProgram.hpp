#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "vbscript/Budget.hpp"
#include "vbscript/objects/RegExpPattern.hpp"

namespace hearthmake::vbscript {

// A pattern ready to be matched, by PCRE2's just-in-time compiler where there is one.
//
// A match that backtracks without end still ends in time: matching begins with a small limit of backtracks
// and, in a long subject, goes forward in windows of starting places between which the clock is looked at.
// What goes over the limit is matched by a second program that charges the budget at every item of the
// pattern. It is about three times as slow and made only when it is needed.
class RegExpProgram {
 public:
  // No place: what a group that took no part begins and ends with.
  static constexpr std::size_t kNoPlace = ~std::size_t{0};

  // Errors: those of RegExpPattern, and 7 "Out of memory" for what is too large.
  RegExpProgram(std::u16string_view pattern, RegExpFlags flags);
  RegExpProgram(const RegExpProgram&) = delete;
  RegExpProgram& operator=(const RegExpProgram&) = delete;
  ~RegExpProgram();

  std::uint32_t GroupCount() const { return m_groups; }
  // A subject must be folded with Lower before it is matched.
  bool WantsFoldedSubject() const { return m_flags.ignoreCase; }

  // The first match that begins at start or later. Throws Interrupted when the budget is used up; error 7
  // when the match would need too much memory.
  bool Match(std::u16string_view subject, std::size_t start, Budget& budget);
  // Where the last match and its groups begin and end: pairs, the whole match first. Valid until the next.
  std::span<const std::size_t> Places() const;

 private:
  enum class Outcome { Match, NoMatch, OverLimit };
  class Library;  // PCRE2's own objects

  std::size_t WindowOf(std::size_t length) const;
  Outcome MatchQuickly(std::u16string_view subject, std::size_t start, std::size_t lastStart, Budget& budget);
  bool MatchCarefully(std::u16string_view subject, std::size_t start, Budget& budget);
  // One call of PCRE2 with as much memory as it needs and may have.
  int Run(bool isCareful, std::u16string_view subject, std::size_t start);

  RegExpFlags m_flags;
  std::uint32_t m_groups = 0;
  bool m_hasLoops = false;
  std::unique_ptr<Library> m_library;
};

}  // namespace hearthmake::vbscript
