#include "vbscript/intrinsics/TextSearch.hpp"

#include <algorithm>
#include <bit>
#include <cstring>

#include "vbscript/intrinsics/Arguments.hpp"
#include "vbscript/intrinsics/UnitCase.hpp"

namespace hearthmake::vbscript {

namespace {

// So many units are walked over between two looks at the budget.
constexpr std::size_t kStretch = std::size_t{1} << 16;

// The first place of a unit. memchr is many times faster than a loop over units: it looks for the byte of
// the unit that tells most, and what it finds at the wrong place is passed over.
std::size_t FindUnit(std::u16string_view text, std::size_t start, std::size_t end, char16_t unit) {
  const auto low = static_cast<unsigned char>(unit & 0xFF);
  if (low == 0 || std::endian::native != std::endian::little) {
    const auto* found = std::char_traits<char16_t>::find(text.data() + start, end - start, unit);
    return found == nullptr ? TextSearch::kNotFound : static_cast<std::size_t>(found - text.data());
  }
  const auto* bytes = reinterpret_cast<const unsigned char*>(text.data());
  std::size_t place = 2 * start;
  while (place < 2 * end) {
    const void* found = std::memchr(bytes + place, low, 2 * end - place);
    if (found == nullptr) break;
    place = static_cast<std::size_t>(static_cast<const unsigned char*>(found) - bytes);
    if (place % 2 == 0 && text[place / 2] == unit) return place / 2;
    ++place;
  }
  return TextSearch::kNotFound;
}

}  // namespace

TextSearch::TextSearch(Context& context, std::u16string_view sought, bool ignoreCase)
    : m_context(context), m_sought(sought), m_ignoreCase(ignoreCase) {
  if (!ignoreCase) return;
  ChargeUnits(context, sought.size());
  m_folded.resize(sought.size());
  std::transform(sought.begin(), sought.end(), m_folded.begin(), FoldUnit);
  m_sought = m_folded;
}

std::size_t TextSearch::FindFirstUnit(std::u16string_view text, std::size_t start, std::size_t end) const {
  const char16_t first = m_sought.front();
  if (!m_ignoreCase) return FindUnit(text, start, end, first);
  for (std::size_t place = start; place < end; ++place) {
    if (FoldUnit(text[place]) == first) return place;
  }
  return kNotFound;
}

bool TextSearch::StandsAt(std::u16string_view text, std::size_t place) const {
  if (!m_ignoreCase)
    return std::memcmp(text.data() + place, m_sought.data(), m_sought.size() * sizeof(char16_t)) == 0;
  for (std::size_t i = 0; i < m_sought.size(); ++i) {
    if (FoldUnit(text[place + i]) != m_sought[i]) return false;
  }
  return true;
}

std::size_t TextSearch::Find(std::u16string_view text, std::size_t start) const {
  if (start > text.size() || m_sought.size() > text.size() - start) return kNotFound;
  if (m_sought.empty()) return start;
  const std::size_t end = text.size() - m_sought.size() + 1;  // behind the last place that is possible
  while (start < end) {
    const std::size_t stretch = std::min(end, start + kStretch);
    const std::size_t place = FindFirstUnit(text, start, stretch);
    ChargeUnits(m_context, (place == kNotFound ? stretch : place) - start);
    if (place == kNotFound) {
      start = stretch;
      continue;
    }
    if (m_sought.size() == 1) return place;
    m_context.budget.Charge(1);
    ChargeUnits(m_context, m_sought.size());
    if (StandsAt(text, place)) return place;
    start = place + 1;
  }
  return kNotFound;
}

std::size_t TextSearch::FindLast(std::u16string_view text) const {
  if (m_sought.size() > text.size()) return kNotFound;
  if (m_sought.empty()) return text.size();
  for (std::size_t place = text.size() - m_sought.size() + 1; place-- > 0;) {
    if (place % kStretch == 0) ChargeUnits(m_context, kStretch);
    if ((m_ignoreCase ? FoldUnit(text[place]) : text[place]) != m_sought.front()) continue;
    m_context.budget.Charge(1);
    ChargeUnits(m_context, m_sought.size());
    if (StandsAt(text, place)) return place;
  }
  return kNotFound;
}

}  // namespace hearthmake::vbscript
