#include "adapters/posix/FileName.hpp"

#include <algorithm>

#include "adapters/posix/TextEncoding.hpp"
#include "automation/Utf.hpp"

namespace hearthmake::posix {

namespace {

char32_t FromWindows1252(char byte) {
  return automation::Windows1252Character(static_cast<unsigned char>(byte));
}

// The folded characters of a name, one after the other.
class FoldedReader {
 public:
  explicit FoldedReader(std::string_view name) : m_rest(name), m_utf8(IsUtf8(name)) {}

  bool AtEnd() const { return m_rest.empty(); }
  char32_t Next() {
    const char32_t character = m_utf8 ? automation::DecodeUtf8(m_rest) : FromWindows1252(m_rest.front());
    m_rest.remove_prefix(m_utf8 ? automation::Utf8SequenceLength(m_rest) : 1);
    return FoldCharacter(character);
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
  if (automation::IsAscii(name)) {
    for (const char c : name) hash.Add(FoldCharacter(static_cast<unsigned char>(c)));
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
    if (FoldCharacter(leftByte) != FoldCharacter(rightByte)) return false;
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
