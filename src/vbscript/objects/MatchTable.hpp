#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <string_view>
#include <vector>

#include "automation/Variant.hpp"

namespace hearthmake::vbscript {

// The places of all matches of one search, from which the objects that scripts see are made when they are
// asked for: a search with a million matches makes no million objects.
class MatchTable {
 public:
  // Places that a table may hold; more are error 7 "Out of memory".
  static constexpr std::size_t kMaximumPlaces = std::size_t{1} << 28;

  // The subject is a text variant, whose text is shared.
  MatchTable(automation::Variant subject, std::uint32_t groups)
      : m_subject(std::move(subject)), m_groups(groups) {}

  std::u16string_view Subject() const { return m_subject.AsUtf16(); }
  const automation::Variant& SubjectVariant() const { return m_subject; }
  std::uint32_t GroupCount() const { return m_groups; }
  std::size_t Count() const { return m_places.size() / Stride(); }

  // Pairs of begin and end, the whole match first (see RegExpProgram::Places).
  void Add(std::span<const std::size_t> places);

  std::size_t Begin(std::size_t match) const { return m_places[match * Stride()]; }
  std::size_t End(std::size_t match) const { return m_places[match * Stride() + 1]; }
  std::u16string_view Text(std::size_t match) const {
    return Subject().substr(Begin(match), End(match) - Begin(match));
  }
  // A group (from 0) of a match. One that took no part has an empty text, and Empty for its value.
  std::u16string_view GroupText(std::size_t match, std::size_t group) const;
  automation::Variant GroupValue(std::size_t match, std::size_t group) const;

 private:
  static constexpr std::uint32_t kNoPlace = std::numeric_limits<std::uint32_t>::max();

  std::size_t Stride() const { return 2 * (std::size_t{m_groups} + 1); }

  automation::Variant m_subject;
  std::uint32_t m_groups;
  std::vector<std::uint32_t> m_places;  // a text has less than 2^32 units
};

}  // namespace hearthmake::vbscript
