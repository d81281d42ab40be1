#include "vbscript/objects/RegExpReplacement.hpp"

namespace hearthmake::vbscript {

namespace {

// The number of the group that a reference names, and how many units it takes behind the dollar sign; 0 for
// none.
struct GroupReference {
  std::uint32_t number = 0;
  std::size_t length = 0;
};

GroupReference ReadGroupReference(std::u16string_view text, std::uint32_t groups) {
  const auto digit = [&](std::size_t at) {
    return at < text.size() && text[at] >= u'0' && text[at] <= u'9' ? text[at] - u'0' : -1;
  };
  if (digit(0) < 0) return {};
  const auto one = static_cast<std::uint32_t>(digit(0));
  if (digit(1) >= 0) {
    const std::uint32_t two = one * 10 + static_cast<std::uint32_t>(digit(1));
    if (two >= 1 && two <= groups) return {two, 2};
  }
  if (one >= 1 && one <= groups) return {one, 1};
  return {};
}

}  // namespace

RegExpReplacement::RegExpReplacement(std::u16string_view text, std::uint32_t groups) {
  std::size_t literalStart = 0;
  std::size_t at = 0;
  const auto add = [&](Kind kind, std::size_t length, std::uint32_t group = 0) {
    if (at > literalStart) m_parts.push_back({Kind::Literal, text.substr(literalStart, at - literalStart)});
    at += 1 + length;
    literalStart = at;
    if (kind != Kind::Literal) return m_parts.push_back({kind, {}, group});
    literalStart = at - 1;  // the second of two dollar signs begins the next literal
  };
  while ((at = text.find(u'$', at)) != std::u16string_view::npos) {
    const char16_t next = at + 1 < text.size() ? text[at + 1] : u'\0';
    const GroupReference reference = ReadGroupReference(text.substr(at + 1), groups);
    if (reference.length != 0)
      add(Kind::Group, reference.length, reference.number - 1);
    else if (next == u'&')
      add(Kind::Match, 1);
    else if (next == u'`')
      add(Kind::Before, 1);
    else if (next == u'\'')
      add(Kind::Behind, 1);
    else if (next == u'$')
      add(Kind::Literal, 1);
    else
      ++at;
  }
  if (literalStart < text.size()) m_parts.push_back({Kind::Literal, text.substr(literalStart)});
}

std::u16string_view RegExpReplacement::TextOf(const Part& part, const MatchTable& matches,
                                              std::size_t match) {
  switch (part.kind) {
    case Kind::Literal: return part.literal;
    case Kind::Match: return matches.Text(match);
    case Kind::Before: return matches.Subject().substr(0, matches.Begin(match));
    case Kind::Behind: return matches.Subject().substr(matches.End(match));
    case Kind::Group: return matches.GroupText(match, part.group);
  }
  return {};
}

void RegExpReplacement::AppendTo(std::u16string& result, const MatchTable& matches, std::size_t match) const {
  for (const Part& part : m_parts) result.append(TextOf(part, matches, match));
}

std::size_t RegExpReplacement::LengthFor(const MatchTable& matches, std::size_t match) const {
  std::size_t length = 0;
  for (const Part& part : m_parts) length += TextOf(part, matches, match).size();
  return length;
}

}  // namespace hearthmake::vbscript
