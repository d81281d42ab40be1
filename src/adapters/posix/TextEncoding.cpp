#include "adapters/posix/TextEncoding.hpp"

#include <locale.h>
#include <wctype.h>

#include <algorithm>
#include <array>
#include <cstdint>

namespace hearthmake::posix {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

// What Windows-1252 has at 0x80 to 0x9F; its five undefined bytes stay the C1 controls.
constexpr std::array<char16_t, 32> kWindows1252High = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

struct Decoded {
  char32_t character = kReplacement;
  std::size_t length = 1;
  bool valid = false;
};

Decoded DecodeOne(std::string_view text, std::size_t at) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned char lead = byte(at);
  if (lead < 0x80) return {lead, 1, true};
  const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || text.size() - at < length) return {};
  char32_t character = lead & (0x7Fu >> length);
  for (std::size_t i = 1; i < length; ++i) {
    if ((byte(at + i) & 0xC0) != 0x80) return {};
    character = character << 6 | (byte(at + i) & 0x3F);
  }
  constexpr std::array<char32_t, 5> smallest = {0, 0, 0x80, 0x800, 0x10000};
  const bool surrogate = character >= 0xD800 && character < 0xE000;
  if (character < smallest[length] || character > 0x10FFFF || surrogate) return {};
  return {character, length, true};
}

bool IsAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

// Names are folded to upper case by fixed tables, whatever language the user has chosen.
char32_t Fold(char32_t character) {
  static const locale_t unicode = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  if (unicode == nullptr) return character;
  const auto upper = static_cast<char32_t>(towupper_l(static_cast<wint_t>(character), unicode));
  // The dotless i and the long s are letters of their own to Windows, not spellings of I and S.
  return upper < 0x80 && character >= 0x80 ? character : upper;
}

}  // namespace

bool IsUtf8(std::string_view bytes) {
  for (std::size_t at = 0; at < bytes.size();) {
    const Decoded next = DecodeOne(bytes, at);
    if (!next.valid) return false;
    at += next.length;
  }
  return true;
}

std::string DecodeText(std::string bytes) {
  const std::string_view view = bytes;
  if (view.starts_with("\xFF\xFE")) return Utf8FromUtf16(view.substr(2));
  if (view.starts_with("\xFE\xFF")) {
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) std::swap(bytes[i], bytes[i + 1]);
    return Utf8FromUtf16(std::string_view(bytes).substr(2));
  }
  if (view.starts_with("\xEF\xBB\xBF")) bytes.erase(0, 3);
  return IsUtf8(bytes) ? bytes : Utf8FromWindows1252(bytes);
}

std::string Utf8FromUtf16(std::string_view littleEndianBytes) {
  const std::size_t count = littleEndianBytes.size() / 2;
  const auto unit = [&](std::size_t i) {
    return static_cast<char16_t>(static_cast<unsigned char>(littleEndianBytes[2 * i]) |
                                 static_cast<unsigned char>(littleEndianBytes[2 * i + 1]) << 8);
  };
  std::string text;
  text.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    char32_t character = unit(i);
    if (character >= 0xD800 && character < 0xE000) {
      const bool pair = character < 0xDC00 && i + 1 < count && unit(i + 1) >= 0xDC00 && unit(i + 1) < 0xE000;
      character = pair ? 0x10000 + ((character - 0xD800) << 10) + (unit(++i) - 0xDC00u) : kReplacement;
    }
    AppendUtf8(text, character);
  }
  return text;
}

std::string Utf16FromUtf8(std::string_view utf8) {
  std::string bytes;
  bytes.reserve(utf8.size() * 2);
  const auto put = [&](char32_t unit) {
    bytes += static_cast<char>(unit & 0xFF);
    bytes += static_cast<char>(unit >> 8);
  };
  for (std::size_t at = 0; at < utf8.size();) {
    const Decoded next = DecodeOne(utf8, at);
    at += next.length;
    if (next.character < 0x10000) {
      put(next.character);
    } else {
      put(0xD800 + ((next.character - 0x10000) >> 10));
      put(0xDC00 + ((next.character - 0x10000) & 0x3FF));
    }
  }
  return bytes;
}

std::string Utf8FromWindows1252(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size() + bytes.size() / 8);
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    AppendUtf8(text, byte >= 0x80 && byte < 0xA0 ? kWindows1252High[byte - 0x80u] : byte);
  }
  return text;
}

void AppendUtf8(std::string& text, char32_t character) {
  const auto put = [&](char32_t byte) { text += static_cast<char>(byte); };
  if (character < 0x80) {
    put(character);
  } else if (character < 0x800) {
    put(0xC0 | character >> 6);
    put(0x80 | (character & 0x3F));
  } else if (character < 0x10000) {
    put(0xE0 | character >> 12);
    put(0x80 | (character >> 6 & 0x3F));
    put(0x80 | (character & 0x3F));
  } else {
    put(0xF0 | character >> 18);
    put(0x80 | (character >> 12 & 0x3F));
    put(0x80 | (character >> 6 & 0x3F));
    put(0x80 | (character & 0x3F));
  }
}

std::string FoldCase(std::string_view utf8) {
  std::string folded;
  folded.reserve(utf8.size());
  if (IsAscii(utf8)) {
    for (const char c : utf8) folded += c >= 'a' && c <= 'z' ? static_cast<char>(c & ~0x20) : c;
    return folded;
  }
  for (std::size_t at = 0; at < utf8.size();) {
    const Decoded next = DecodeOne(utf8, at);
    if (next.valid) {
      AppendUtf8(folded, Fold(next.character));
    } else {
      folded += utf8[at];
    }
    at += next.length;
  }
  return folded;
}

}  // namespace hearthmake::posix
