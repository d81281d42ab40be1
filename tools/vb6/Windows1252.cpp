#include "vb6/Windows1252.hpp"

#include <algorithm>
#include <array>

namespace hearthmake::vb6 {
namespace {

// What 0x80 to 0x9F stand for.
constexpr std::array<char16_t, 32> kUpperControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

bool IsAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

char ByteOf(char32_t character) {
  if (character < 0x80 || (character >= 0xA0 && character <= 0xFF)) return static_cast<char>(character);
  const auto found = std::find(kUpperControls.begin(), kUpperControls.end(), character);
  if (found == kUpperControls.end()) return '?';
  return static_cast<char>(0x80 + (found - kUpperControls.begin()));
}

bool IsContinuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

// Takes one character off the front of the text.
char32_t TakeCharacter(std::string_view& text) {
  const auto lead = static_cast<unsigned char>(text.front());
  const std::size_t length = lead < 0x80 ? 1 : lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC2 ? 2 : 0;
  if (length == 0 || length > text.size() ||
      !std::all_of(text.begin() + 1, text.begin() + static_cast<std::ptrdiff_t>(length), IsContinuation)) {
    text.remove_prefix(1);
    return 0xFFFD;
  }
  constexpr std::array<unsigned char, 5> kLeadBits = {0, 0x7F, 0x1F, 0x0F, 0x07};
  char32_t character = lead & kLeadBits[length];
  for (std::size_t i = 1; i < length; ++i) {
    character = (character << 6) | (static_cast<unsigned char>(text[i]) & 0x3FU);
  }
  text.remove_prefix(length);
  return character;
}

}  // namespace

char16_t CharacterOf(unsigned char byte) {
  return byte >= 0x80 && byte < 0xA0 ? kUpperControls[byte - 0x80U] : static_cast<char16_t>(byte);
}

std::string ToUtf8(std::string_view bytes) {
  if (IsAscii(bytes)) return std::string(bytes);
  std::string text;
  text.reserve(bytes.size() + 16);
  for (const char byte : bytes) {
    const char16_t character = CharacterOf(static_cast<unsigned char>(byte));
    if (character < 0x80) {
      text += static_cast<char>(character);
    } else if (character < 0x800) {
      text += static_cast<char>(0xC0 | (character >> 6));
      text += static_cast<char>(0x80 | (character & 0x3F));
    } else {
      text += static_cast<char>(0xE0 | (character >> 12));
      text += static_cast<char>(0x80 | ((character >> 6) & 0x3F));
      text += static_cast<char>(0x80 | (character & 0x3F));
    }
  }
  return text;
}

std::string ToWindows1252(std::string_view text) {
  if (IsAscii(text)) return std::string(text);
  std::string bytes;
  while (!text.empty()) bytes += ByteOf(TakeCharacter(text));
  return bytes;
}

}  // namespace hearthmake::vb6
