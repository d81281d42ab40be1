#include "vbscript/objects/MatchTable.hpp"

#include "vbscript/Errors.hpp"

namespace hearthmake::vbscript {

using automation::Variant;

void MatchTable::Add(std::span<const std::size_t> places) {
  if (m_places.size() + places.size() > kMaximumPlaces) RaiseRuntime(number::kOutOfMemory);
  // What stands for no place is all ones in either width.
  for (const std::size_t place : places) m_places.push_back(static_cast<std::uint32_t>(place));
}

std::u16string_view MatchTable::GroupText(std::size_t match, std::size_t group) const {
  const std::size_t at = match * Stride() + 2 * (group + 1);
  if (m_places[at] == kNoPlace) return {};
  return Subject().substr(m_places[at], m_places[at + 1] - m_places[at]);
}

Variant MatchTable::GroupValue(std::size_t match, std::size_t group) const {
  if (m_places[match * Stride() + 2 * (group + 1)] == kNoPlace) return {};
  return Variant::FromUtf16(GroupText(match, group));
}

}  // namespace hearthmake::vbscript
