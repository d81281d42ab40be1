#include "adapters/posix/TextEncoding.hpp"

#include <locale.h>
#include <wctype.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <utility>

#include "automation/Utf.hpp"

namespace hearthmake::posix {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

struct Decoded {
  char32_t character = kReplacement;
  std::size_t length = 1;
  bool valid = false;
};

// Surrogates are no characters of a text from outside.
Decoded DecodeOne(std::string_view text, std::size_t at) {
  const std::string_view rest = text.substr(at);
  const std::size_t length = automation::Utf8SequenceLength(rest);
  const char32_t character = automation::DecodeUtf8(rest);
  const bool isStray = length == 1 && static_cast<unsigned char>(rest.front()) >= 0x80;
  const bool isSurrogate = character >= 0xD800 && character < 0xE000;
  return isStray || isSurrogate ? Decoded{} : Decoded{character, length, true};
}

// How many ASCII characters a text begins with, eight at a time: the rare other ones must not make the
// reading of a large file slow.
std::size_t AsciiLength(std::string_view text) {
  std::size_t length = 0;
  std::uint64_t word = 0;
  while (text.size() - length >= sizeof word) {
    std::memcpy(&word, text.data() + length, sizeof word);
    if ((word & 0x8080808080808080U) != 0) break;
    length += sizeof word;
  }
  while (length < text.size() && static_cast<unsigned char>(text[length]) < 0x80) ++length;
  return length;
}

}  // namespace

char32_t FoldCharacter(char32_t character) {
  if (character < 0x80) return character >= 'a' && character <= 'z' ? character - ('a' - 'A') : character;
  static const locale_t unicode = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  if (unicode == nullptr) return character;
  const auto upper = static_cast<char32_t>(towupper_l(static_cast<wint_t>(character), unicode));
  // The dotless i and the long s are letters of their own to Windows, not spellings of I and S.
  return upper < 0x80 ? character : upper;
}

bool IsUtf8(std::string_view bytes) {
  for (std::size_t at = AsciiLength(bytes); at < bytes.size(); at += AsciiLength(bytes.substr(at))) {
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
  return IsUtf8(bytes) ? std::move(bytes) : automation::Windows1252ToUtf8(bytes);
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
    automation::AppendUtf8(text, character);
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

std::string FoldCase(std::string_view utf8) {
  if (automation::IsAscii(utf8)) {
    std::string upper(utf8);
    for (char& c : upper) c = c >= 'a' && c <= 'z' ? static_cast<char>(c & ~0x20) : c;
    return upper;
  }
  std::string folded;
  folded.reserve(utf8.size());
  for (std::size_t at = 0; at < utf8.size();) {
    const Decoded next = DecodeOne(utf8, at);
    if (next.valid) {
      automation::AppendUtf8(folded, FoldCharacter(next.character));
    } else {
      folded += utf8[at];
    }
    at += next.length;
  }
  return folded;
}

}  // namespace hearthmake::posix
