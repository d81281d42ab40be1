#include "host/text/CleanText.hpp"

#include <algorithm>

#include "automation/Utf.hpp"

namespace hearthmake::host {

namespace {

constexpr char32_t kDelete = 0x7F;
constexpr char32_t kControlPictures = 0x2400;
constexpr char32_t kDeletePicture = 0x2421;
constexpr char32_t kReplacement = 0xFFFD;

// What XML and HTML forbid although UTF-8 has it, and what turns the reading direction of what follows.
bool IsTrouble(char32_t c) {
  const bool isC1 = c >= 0x80 && c < 0xA0;
  const bool isBidi = (c >= 0x202A && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069);
  const bool isNoCharacter = (c & 0xFFFE) == 0xFFFE || (c >= 0xFDD0 && c <= 0xFDEF);
  return isC1 || isBidi || isNoCharacter || (c >= 0xD800 && c <= 0xDFFF);
}

char32_t Shown(char32_t c) {
  if (c == '\n' || c == '\t') return c;
  if (c < ' ') return kControlPictures + c;
  if (c == kDelete) return kDeletePicture;
  return IsTrouble(c) ? kReplacement : c;
}

}  // namespace

std::string CleanText(std::string_view text) {
  std::string clean;
  clean.reserve(text.size());
  while (!text.empty()) {
    const std::size_t length = automation::Utf8SequenceLength(text);
    if (text.front() == '\r') {
      if (text.size() < 2 || text[1] != '\n') clean += '\n';
    } else {
      automation::AppendUtf8(clean, Shown(automation::DecodeUtf8(text)));
    }
    text.remove_prefix(length);
  }
  return clean;
}

std::string CleanLine(std::string_view text) {
  std::string clean = CleanText(text);
  std::replace_if(
      clean.begin(), clean.end(), [](char c) { return c == '\n' || c == '\t'; }, ' ');
  return clean;
}

}  // namespace hearthmake::host
