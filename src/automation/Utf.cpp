#include "automation/Utf.hpp"

#include <array>
#include <cstdint>
#include <cstring>

namespace hearthmake::automation {

namespace {

// Bytes 0x80 to 0x9F of Windows-1252; the rest of the upper half is Latin-1.
constexpr std::array<char16_t, 32> kUpperControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

bool IsContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

char ToWindows1252(char32_t codePoint) {
  if (codePoint < 0x80 || (codePoint >= 0xA0 && codePoint <= 0xFF)) return static_cast<char>(codePoint);
  for (std::size_t i = 0; i < kUpperControls.size(); ++i) {
    if (kUpperControls[i] == codePoint) return static_cast<char>(0x80 + i);
  }
  return '?';
}

}  // namespace

bool IsAscii(std::string_view text) {
  // Most texts are, and are asked for it often: eight bytes at a time.
  std::uint64_t bytes = 0;
  while (text.size() >= sizeof bytes) {
    std::memcpy(&bytes, text.data(), sizeof bytes);
    if ((bytes & 0x8080808080808080U) != 0) return false;
    text.remove_prefix(sizeof bytes);
  }
  for (const char c : text) {
    if (static_cast<unsigned char>(c) >= 0x80) return false;
  }
  return true;
}

std::size_t Utf8SequenceLength(std::string_view text) {
  const auto lead = static_cast<unsigned char>(text.front());
  if (lead < 0xC2 || lead > 0xF4) return 1;
  const std::size_t length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
  if (text.size() < length) return 1;
  for (std::size_t i = 1; i < length; ++i) {
    if (!IsContinuation(text[i])) return 1;
  }
  const auto second = static_cast<unsigned char>(text[1]);
  const bool isOverlong = (lead == 0xE0 && second < 0xA0) || (lead == 0xF0 && second < 0x90);
  const bool isBeyondUnicode = lead == 0xF4 && second > 0x8F;
  return isOverlong || isBeyondUnicode ? 1 : length;
}

char32_t DecodeUtf8(std::string_view text) {
  const auto byte = [&](std::size_t i) { return static_cast<char32_t>(static_cast<unsigned char>(text[i])); };
  switch (Utf8SequenceLength(text)) {
    case 2: return (byte(0) & 0x1F) << 6 | (byte(1) & 0x3F);
    case 3: return (byte(0) & 0x0F) << 12 | (byte(1) & 0x3F) << 6 | (byte(2) & 0x3F);
    case 4: return (byte(0) & 0x07) << 18 | (byte(1) & 0x3F) << 12 | (byte(2) & 0x3F) << 6 | (byte(3) & 0x3F);
    default: return byte(0) < 0x80 ? byte(0) : U'\uFFFD';
  }
}

void AppendUtf8(std::string& text, char32_t codePoint) {
  const auto append = [&](char32_t bits) { text.push_back(static_cast<char>(bits)); };
  if (codePoint < 0x80) {
    append(codePoint);
  } else if (codePoint < 0x800) {
    append(0xC0 | codePoint >> 6);
    append(0x80 | (codePoint & 0x3F));
  } else if (codePoint < 0x10000) {
    append(0xE0 | codePoint >> 12);
    append(0x80 | (codePoint >> 6 & 0x3F));
    append(0x80 | (codePoint & 0x3F));
  } else {
    append(0xF0 | codePoint >> 18);
    append(0x80 | (codePoint >> 12 & 0x3F));
    append(0x80 | (codePoint >> 6 & 0x3F));
    append(0x80 | (codePoint & 0x3F));
  }
}

std::u16string Utf8ToUtf16(std::string_view text) {
  if (IsAscii(text)) return {text.begin(), text.end()};  // most texts are
  std::u16string result;
  result.reserve(text.size());
  while (!text.empty()) {
    const char32_t codePoint = DecodeUtf8(text);
    if (codePoint < 0x10000) {
      result.push_back(static_cast<char16_t>(codePoint));
    } else {
      result.push_back(static_cast<char16_t>(0xD800 + ((codePoint - 0x10000) >> 10)));
      result.push_back(static_cast<char16_t>(0xDC00 + ((codePoint - 0x10000) & 0x3FF)));
    }
    text.remove_prefix(Utf8SequenceLength(text));
  }
  return result;
}

std::string Utf16ToUtf8(std::u16string_view text) {
  std::string result;
  result.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    char32_t codePoint = text[i];
    const bool isHigh = codePoint >= 0xD800 && codePoint <= 0xDBFF;
    if (isHigh && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] <= 0xDFFF) {
      codePoint = 0x10000 + ((codePoint - 0xD800) << 10) + (text[++i] - 0xDC00);
    }
    AppendUtf8(result, codePoint);
  }
  return result;
}

char16_t Windows1252Character(unsigned char byte) {
  return byte >= 0x80 && byte <= 0x9F ? kUpperControls[byte - 0x80] : byte;
}

std::string Windows1252ToUtf8(std::string_view bytes) {
  if (IsAscii(bytes)) return std::string(bytes);
  std::string result;
  result.reserve(bytes.size() + 16);
  for (const char c : bytes) AppendUtf8(result, Windows1252Character(static_cast<unsigned char>(c)));
  return result;
}

std::string Utf8ToWindows1252(std::string_view text) {
  if (IsAscii(text)) return std::string(text);
  std::string result;
  result.reserve(text.size());
  while (!text.empty()) {
    result.push_back(ToWindows1252(DecodeUtf8(text)));
    text.remove_prefix(Utf8SequenceLength(text));
  }
  return result;
}

}  // namespace hearthmake::automation
