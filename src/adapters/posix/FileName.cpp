#include "adapters/posix/FileName.hpp"

#include <algorithm>
#include <clocale>
#include <cwctype>

#include "automation/Utf.hpp"

namespace hearthmake::posix {

namespace {

constexpr char32_t kInvalid = 0xFFFFFFFF;

bool IsAscii(std::string_view text) {
  return std::none_of(text.begin(), text.end(), [](char c) { return (c & 0x80) != 0; });
}

// Takes one character off the front of the text; kInvalid when it is not well-formed UTF-8 (overlong
// forms, surrogates and what is above U+10FFFF included).
char32_t TakeUtf8(std::string_view& text) {
  const auto lead = static_cast<unsigned char>(text.front());
  std::size_t length = 1;
  char32_t character = lead;
  char32_t smallest = 0;
  if (lead >= 0xF0 && lead < 0xF8) {
    length = 4, character = lead & 0x07, smallest = 0x10000;
  } else if (lead >= 0xE0 && lead < 0xF0) {
    length = 3, character = lead & 0x0F, smallest = 0x800;
  } else if (lead >= 0xC0 && lead < 0xE0) {
    length = 2, character = lead & 0x1F, smallest = 0x80;
  } else if (lead >= 0x80) {
    return kInvalid;
  }
  if (text.size() < length) return kInvalid;
  for (std::size_t i = 1; i < length; ++i) {
    const auto next = static_cast<unsigned char>(text[i]);
    if ((next & 0xC0) != 0x80) return kInvalid;
    character = character << 6 | (next & 0x3F);
  }
  if (character < smallest || character > 0x10FFFF) return kInvalid;
  if (character >= 0xD800 && character < 0xE000) return kInvalid;
  text.remove_prefix(length);
  return character;
}

bool IsUtf8(std::string_view text) {
  while (!text.empty()) {
    if (TakeUtf8(text) == kInvalid) return false;
  }
  return true;
}

char32_t FromWindows1252(char byte) {
  return automation::Windows1252Character(static_cast<unsigned char>(byte));
}

char32_t FoldAscii(char32_t character) {
  return character >= 'a' && character <= 'z' ? character - ('a' - 'A') : character;
}

// Upper case, one character for one, as the file systems of Windows fold names. Never the locale of
// the process: whether two names are the same must not depend on who runs the program.
char32_t Fold(char32_t character) {
  if (character < 0x80) return FoldAscii(character);
  static const locale_t unicode = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  const auto wide = static_cast<wint_t>(character);
  const auto upper =
      static_cast<char32_t>(unicode != nullptr ? towupper_l(wide, unicode) : std::towupper(wide));
  // The dotless i and the long s are letters of their own to Windows, not spellings of I and S.
  return upper < 0x80 ? character : upper;
}

// The folded characters of a name, one after the other.
class FoldedReader {
 public:
  explicit FoldedReader(std::string_view name) : m_rest(name), m_utf8(IsUtf8(name)) {}

  bool AtEnd() const { return m_rest.empty(); }
  char32_t Next() {
    if (m_utf8) return Fold(TakeUtf8(m_rest));
    const char32_t character = FromWindows1252(m_rest.front());
    m_rest.remove_prefix(1);
    return Fold(character);
  }

 private:
  std::string_view m_rest;
  bool m_utf8;
};

// FNV-1a, over characters in place of bytes.
class Hash {
 public:
  void Add(char32_t character) { m_value = (m_value ^ character) * 16777619U; }
  std::uint32_t Value() const { return m_value; }

 private:
  std::uint32_t m_value = 2166136261U;
};

}  // namespace

std::uint32_t FoldedHash(std::string_view name) {
  Hash hash;
  if (IsAscii(name)) {
    for (const char c : name) hash.Add(FoldAscii(static_cast<unsigned char>(c)));
    return hash.Value();
  }
  for (FoldedReader reader(name); !reader.AtEnd();) hash.Add(reader.Next());
  return hash.Value();
}

bool FoldedEqual(std::string_view left, std::string_view right) {
  // Most names differ in their first characters, and those are ASCII whatever the rest is.
  while (!left.empty() && !right.empty()) {
    const auto leftByte = static_cast<unsigned char>(left.front());
    const auto rightByte = static_cast<unsigned char>(right.front());
    if (leftByte >= 0x80 || rightByte >= 0x80) break;
    if (FoldAscii(leftByte) != FoldAscii(rightByte)) return false;
    left.remove_prefix(1);
    right.remove_prefix(1);
  }
  FoldedReader leftReader(left);
  FoldedReader rightReader(right);
  while (!leftReader.AtEnd() && !rightReader.AtEnd()) {
    if (leftReader.Next() != rightReader.Next()) return false;
  }
  return leftReader.AtEnd() && rightReader.AtEnd();
}

std::string FileNameToUtf8(std::string_view name) {
  if (IsUtf8(name)) return std::string(name);
  std::string text;
  for (const char byte : name) automation::AppendUtf8(text, FromWindows1252(byte));
  return text;
}

std::string_view WithoutTrailingDots(std::string_view name) {
  const std::size_t last = name.find_last_not_of(". ");
  return last == std::string_view::npos ? name : name.substr(0, last + 1);
}

}  // namespace hearthmake::posix
