#include "vbscript/objects/RegExpPattern.hpp"

#include <algorithm>
#include <limits>

#include "vbscript/Errors.hpp"
#include "vbscript/values/Text16.hpp"

namespace hearthmake::vbscript {

namespace {

constexpr std::uint64_t kNoMaximum = std::numeric_limits<std::uint64_t>::max();
constexpr std::uint32_t kMaximumBackReference = 99;
constexpr std::uint64_t kShortRepeat = 8;

bool IsDigit(char16_t unit) { return unit >= u'0' && unit <= u'9'; }
bool IsOctalDigit(char16_t unit) { return unit >= u'0' && unit <= u'7'; }
bool IsAsciiLetter(char16_t unit) { return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z'); }
bool IsSetLetter(char16_t unit) { return std::u16string_view(u"dDsSwW").find(unit) != std::u16string::npos; }

int HexadecimalDigit(char16_t unit) {
  if (IsDigit(unit)) return unit - u'0';
  if (unit >= u'a' && unit <= u'f') return unit - u'a' + 10;
  if (unit >= u'A' && unit <= u'F') return unit - u'A' + 10;
  return -1;
}

// Every unit that folding changes, in order: what a range has of them is found without a walk over it.
const std::u16string& Capitals() {
  static const std::u16string kCapitals = [] {
    std::u16string capitals;
    for (char32_t unit = 0; unit <= 0xFFFF; ++unit) {
      const auto u = static_cast<char16_t>(unit);
      if (LowerUnit(u) != u) capitals.push_back(u);
    }
    return capitals;
  }();
  return kCapitals;
}

}  // namespace

RegExpPattern::RegExpPattern(std::u16string_view pattern, RegExpFlags flags)
    : m_pattern(pattern), m_flags(flags) {
  if (pattern.size() > kMaximumLength) RaiseRuntime(number::kOutOfMemory);
  m_translation.reserve(pattern.size() + pattern.size() / 4);
  Translate();
  m_pattern = {};
}

char16_t RegExpPattern::Peek(std::size_t ahead) const {
  return m_pattern.size() - m_at > ahead ? m_pattern[m_at + ahead] : u'\0';
}

void RegExpPattern::Translate() {
  while (!AtEnd()) {
    const char16_t unit = Peek();
    switch (unit) {
      case u'(': TranslateGroupStart(); break;
      case u')': TranslateGroupEnd(); break;
      case u'[': TranslateClass(); break;
      case u'\\': TranslateEscape(); break;
      case u'*':
      case u'+':
      case u'?': TranslateQuantifier(); break;
      case u'{':
        if (ReadBraces().length != 0) {
          TranslateQuantifier();
          break;
        }
        [[fallthrough]];
      default:
        ++m_at;
        m_isQuantifiable = unit != u'|' && unit != u'^' && unit != u'$';
        if (unit == u'|' || unit == u'.' || (unit == u'^' && !m_flags.multiline))
          m_translation.push_back(unit);
        else if (unit == u'^')
          Emit(u"(?<![^\\n\\r])");
        else if (unit == u'$')
          Emit(m_flags.multiline ? u"(?![^\\n\\r])" : u"\\z");
        else
          EmitUnit(unit);
    }
  }
  if (m_depth != 0) RaiseRuntime(number::kExpectedRightParenthesisInRegExp);
}

void RegExpPattern::TranslateGroupStart() {
  if (++m_depth > kMaximumDepth) RaiseRuntime(number::kOutOfMemory);
  m_isQuantifiable = false;
  for (const std::u16string_view opening : {u"(?:", u"(?=", u"(?!"}) {
    if (!StartsWith(opening)) continue;
    m_at += opening.size();
    return Emit(opening);
  }
  if (StartsWith(u"(?")) RaiseRuntime(number::kRegExpSyntax);
  ++m_at;
  ++m_groups;
  // PCRE2 gives "(*" a meaning of its own; here a quantifier is refused there anyhow.
  Emit(u"(");
}

void RegExpPattern::TranslateGroupEnd() {
  if (m_depth == 0) RaiseRuntime(number::kRegExpSyntax);
  --m_depth;
  ++m_at;
  m_isQuantifiable = true;
  Emit(u")");
}

void RegExpPattern::TranslateEscape() {
  const char16_t next = Peek(1);
  if (next == u'b' || next == u'B') {
    m_at += 2;
    m_isQuantifiable = false;
    return Emit(next == u'b' ? u"\\b" : u"\\B");
  }
  m_isQuantifiable = true;
  if (const std::uint32_t reference = ReadBackReference(); reference != 0) {
    Emit(u"\\g{");
    EmitNumber(reference);
    return Emit(u"}");
  }
  const Unit escaped = ReadUnitEscape(false);
  if (escaped.set != 0) {
    m_translation.push_back(u'\\');
    m_translation.push_back(escaped.set);
  } else {
    EmitUnit(escaped.unit);
  }
}

// A number refers to a group that was opened before it: two digits if there are as many groups, else one.
std::uint32_t RegExpPattern::ReadBackReference() {
  const char16_t first = Peek(1);
  if (first < u'1' || first > u'9') return 0;
  const auto one = static_cast<std::uint32_t>(first - u'0');
  if (one > m_groups) return 0;
  if (IsDigit(Peek(2))) {
    const std::uint32_t two = one * 10 + static_cast<std::uint32_t>(Peek(2) - u'0');
    if (two <= std::min(m_groups, kMaximumBackReference)) {
      m_at += 3;
      return two;
    }
  }
  m_at += 2;
  return one;
}

// After a backslash that is no assertion and no back-reference.
RegExpPattern::Unit RegExpPattern::ReadUnitEscape(bool isInClass) {
  if (m_at + 1 == m_pattern.size())
    RaiseRuntime(isInClass ? number::kExpectedRightBracket : number::kRegExpSyntax);
  const char16_t letter = Peek(1);
  m_at += 2;
  if (IsSetLetter(letter)) return {0, letter};
  char16_t unit = letter;
  switch (letter) {
    case u'f': return {u'\f'};
    case u'n': return {u'\n'};
    case u'r': return {u'\r'};
    case u't': return {u'\t'};
    case u'v': return {u'\v'};
    case u'b': return {isInClass ? u'\b' : u'b'};
    case u'x': ReadHexadecimal(2, unit); return {unit};
    case u'u': ReadHexadecimal(4, unit); return {unit};
    case u'c':
      if (IsAsciiLetter(Peek())) unit = static_cast<char16_t>(m_pattern[m_at++] % 32);
      return {unit};
    default: break;
  }
  if (!IsOctalDigit(letter)) return {letter};
  --m_at;
  return {ReadOctal()};
}

// Up to three octal digits, as far as they stay below 256.
char16_t RegExpPattern::ReadOctal() {
  const std::size_t longest = Peek() <= u'3' ? 3 : 2;
  unsigned value = 0;
  for (std::size_t i = 0; i < longest && IsOctalDigit(Peek()); ++i)
    value = value * 8 + static_cast<unsigned>(m_pattern[m_at++] - u'0');
  return static_cast<char16_t>(value);
}

// Leaves the unit alone where there are fewer digits: the escape stands for its letter then.
void RegExpPattern::ReadHexadecimal(std::size_t digits, char16_t& unit) {
  unsigned value = 0;
  for (std::size_t i = 0; i < digits; ++i) {
    const int digit = HexadecimalDigit(Peek(i));
    if (digit < 0) return;
    value = value * 16 + static_cast<unsigned>(digit);
  }
  m_at += digits;
  unit = static_cast<char16_t>(value);
}

RegExpPattern::Quantifier RegExpPattern::ReadBraces() const {
  std::size_t at = m_at + 1;
  const auto readNumber = [&](std::uint64_t& value) {
    const std::size_t start = at;
    value = 0;
    for (; at < m_pattern.size() && IsDigit(m_pattern[at]); ++at)
      value = std::min<std::uint64_t>(value * 10 + static_cast<std::uint64_t>(m_pattern[at] - u'0'),
                                      std::numeric_limits<std::uint32_t>::max());
    return at != start;
  };
  const auto is = [&](char16_t unit) { return at < m_pattern.size() && m_pattern[at] == unit; };
  Quantifier result{0, 0, 0};
  if (!readNumber(result.minimum)) return {0, 0, 0};
  result.maximum = result.minimum;
  if (is(u',')) {
    ++at;
    if (!readNumber(result.maximum)) result.maximum = kNoMaximum;
  }
  if (!is(u'}')) return {0, 0, 0};
  result.length = at + 1 - m_at;
  return result;
}

void RegExpPattern::TranslateQuantifier() {
  if (!m_isQuantifiable) RaiseRuntime(number::kUnexpectedQuantifier);
  m_isQuantifiable = false;
  if (Peek() != u'{') {
    m_hasLoops = m_hasLoops || Peek() != u'?';
    m_translation.push_back(m_pattern[m_at++]);
  } else {
    const Quantifier braces = ReadBraces();
    m_at += braces.length;
    if (braces.minimum > braces.maximum) RaiseRuntime(number::kRegExpSyntax);
    if (braces.minimum > kMaximumRepeat) RaiseRuntime(number::kOutOfMemory);
    m_hasLoops = m_hasLoops || braces.maximum > kShortRepeat;
    Emit(u"{");
    EmitNumber(braces.minimum);
    Emit(u",");
    if (braces.maximum <= kMaximumRepeat) EmitNumber(braces.maximum);
    Emit(u"}");
  }
  if (Peek() != u'?') return;
  ++m_at;
  Emit(u"?");
}

void RegExpPattern::TranslateClass() {
  ++m_at;
  m_isQuantifiable = true;
  const bool isNegated = Peek() == u'^';
  if (isNegated) ++m_at;
  if (Peek() == u']') {  // no unit at all, or any
    ++m_at;
    return Emit(isNegated ? u"[\\x{0}-\\x{ffff}]" : u"[^\\x{0}-\\x{ffff}]");
  }
  Emit(isNegated ? u"[^" : u"[");
  while (!AtEnd() && Peek() != u']') {
    const Unit first = ReadClassUnit();
    const bool isRange = Peek() == u'-' && m_pattern.size() - m_at > 1 && Peek(1) != u']';
    if (!isRange) {
      EmitClassUnit(first);
      continue;
    }
    ++m_at;
    const Unit last = ReadClassUnit();
    if (first.set != 0 || last.set != 0) {  // a hyphen beside a set stands for itself
      EmitClassUnit(first);
      EmitClassUnit({u'-'});
      EmitClassUnit(last);
    } else {
      if (first.unit > last.unit) RaiseRuntime(number::kInvalidRange);
      EmitClassRange(first.unit, last.unit);
    }
  }
  if (AtEnd()) RaiseRuntime(number::kExpectedRightBracket);
  ++m_at;
  Emit(u"]");
}

RegExpPattern::Unit RegExpPattern::ReadClassUnit() {
  if (Peek() == u'\\') return ReadUnitEscape(true);
  return {m_pattern[m_at++]};
}

void RegExpPattern::EmitClassUnit(Unit item) {
  if (item.set == 0) return EmitUnit(item.unit);
  m_translation.push_back(u'\\');
  m_translation.push_back(item.set);
}

// A folded subject has no capitals, so that the range itself may keep them; their small letters are added.
void RegExpPattern::EmitClassRange(char16_t first, char16_t last) {
  const auto emitRange = [this](char16_t from, char16_t to) {
    EmitHexadecimal(from);
    if (from == to) return;
    Emit(u"-");
    EmitHexadecimal(to);
  };
  emitRange(first, last);
  if (!m_flags.ignoreCase) return;
  const std::u16string& capitals = Capitals();
  const auto isIn = [&](char16_t unit) { return unit >= first && unit <= last; };
  auto at = std::lower_bound(capitals.begin(), capitals.end(), first);
  while (at != capitals.end() && *at <= last) {
    const char16_t from = LowerUnit(*at++);
    if (isIn(from)) continue;
    char16_t to = from;
    while (at != capitals.end() && *at <= last && LowerUnit(*at) == to + 1) to = LowerUnit(*at++);
    emitRange(from, to);
  }
}

void RegExpPattern::EmitUnit(char16_t unit) {
  if (m_flags.ignoreCase) unit = LowerUnit(unit);
  const bool isPlain = unit > 0x7F || unit == u' ' || unit == u'_' || IsDigit(unit) || IsAsciiLetter(unit);
  if (isPlain)
    m_translation.push_back(unit);
  else
    EmitHexadecimal(unit);
}

void RegExpPattern::EmitNumber(std::uint64_t number) {
  for (const char digit : std::to_string(number)) m_translation.push_back(static_cast<char16_t>(digit));
}

void RegExpPattern::EmitHexadecimal(char16_t unit) {
  Emit(u"\\x{");
  for (int shift = 12; shift >= 0; shift -= 4) {
    const unsigned value = unit >> shift;
    if (value != 0 || shift == 0) m_translation.push_back(u"0123456789abcdef"[value % 16]);
  }
  Emit(u"}");
}

}  // namespace hearthmake::vbscript
