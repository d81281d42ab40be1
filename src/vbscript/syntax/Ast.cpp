#include "vbscript/syntax/Ast.hpp"

#include <algorithm>

namespace hearthmake::vbscript {

namespace {

// A CR LF pair ends its line with its LF, so that each line end is counted at one unit only.
bool EndsLine(std::u16string_view source, std::size_t at) {
  if (source[at] == u'\n') return true;
  return source[at] == u'\r' && (at + 1 == source.size() || source[at + 1] != u'\n');
}

std::size_t StartOfLine(std::u16string_view source, std::size_t offset) {
  while (offset > 0 && !EndsLine(source, offset - 1)) --offset;
  return offset;
}

std::size_t Within(std::u16string_view source, Offset offset) {
  return std::min<std::size_t>(offset, source.size());
}

}  // namespace

LineAndColumn Locate(std::u16string_view source, Offset offset) {
  const std::size_t at = Within(source, offset);
  LineAndColumn place{1, static_cast<std::int32_t>(at - StartOfLine(source, at)) + 1};
  for (std::size_t i = 0; i < at; ++i) place.line += EndsLine(source, i) ? 1 : 0;
  return place;
}

std::u16string_view LineAt(std::u16string_view source, Offset offset) {
  const std::size_t start = StartOfLine(source, Within(source, offset));
  return source.substr(start, source.find_first_of(u"\r\n", start) - start);
}

}  // namespace hearthmake::vbscript
