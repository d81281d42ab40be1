#include "adapters/typelib/TypeLibText.hpp"

#include <cstddef>

namespace hearthmake::typelib {

namespace {

// What Windows-1252 has at 0x80 to 0x9F; the rest of it is Latin-1.
constexpr std::array<char16_t, 32> kUpperControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

void AppendUtf8(std::string& text, char16_t codePoint) {
  if (codePoint < 0x80) {
    text += static_cast<char>(codePoint);
  } else if (codePoint < 0x800) {
    text += static_cast<char>(0xC0 | codePoint >> 6);
    text += static_cast<char>(0x80 | (codePoint & 0x3F));
  } else {
    text += static_cast<char>(0xE0 | codePoint >> 12);
    text += static_cast<char>(0x80 | (codePoint >> 6 & 0x3F));
    text += static_cast<char>(0x80 | (codePoint & 0x3F));
  }
}

}  // namespace

std::string FormatGuid(const GuidBytes& guid) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  // The first three groups are little-endian numbers, the rest are bytes in their order.
  constexpr std::array<unsigned, 16> kOrder = {3, 2, 1, 0, 5, 4, 7, 6, 8, 9, 10, 11, 12, 13, 14, 15};
  std::string text = "{";
  text.reserve(kNullGuid.size());
  for (std::size_t i = 0; i < kOrder.size(); ++i) {
    if (i == 4 || i == 6 || i == 8 || i == 10) text += '-';
    text += kDigits[guid[kOrder[i]] >> 4];
    text += kDigits[guid[kOrder[i]] & 0xF];
  }
  text += '}';
  return text;
}

std::string DecodeText(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size());
  for (const char c : bytes) {
    const auto byte = static_cast<std::uint8_t>(c);
    const bool upperControl = byte >= 0x80 && byte < 0xA0;
    AppendUtf8(text, upperControl ? kUpperControls[byte - 0x80u] : static_cast<char16_t>(byte));
  }
  return text;
}

}  // namespace hearthmake::typelib
