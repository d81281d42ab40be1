#include "vbscript/objects/TextEncoding.hpp"

#include <algorithm>
#include <array>

#include "automation/Utf.hpp"

namespace hearthmake::vbscript {

namespace {

constexpr unsigned char kFirstNonAscii = 0x80;

const std::array<char16_t, 256>& Windows1252Characters() {
  static const std::array<char16_t, 256> kCharacters = [] {
    std::array<char16_t, 256> characters{};
    for (std::size_t byte = 0; byte < characters.size(); ++byte) {
      characters[byte] = automation::Windows1252Character(static_cast<unsigned char>(byte));
    }
    return characters;
  }();
  return kCharacters;
}

void DecodeWindows1252(std::string_view bytes, std::u16string& text) {
  const auto& characters = Windows1252Characters();
  const std::size_t start = text.size();
  text.resize(start + bytes.size());
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    text[start + i] = characters[static_cast<unsigned char>(bytes[i])];
  }
}

std::size_t DecodeUtf16(std::string_view bytes, std::u16string& text) {
  const std::size_t start = text.size();
  text.resize(start + bytes.size() / 2);
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    const auto low = static_cast<unsigned char>(bytes[i]);
    const auto high = static_cast<unsigned char>(bytes[i + 1]);
    text[start + i / 2] = static_cast<char16_t>(low | high << 8);
  }
  return bytes.size() / 2 * 2;
}

// How many bytes the sequence has that a lead byte begins; 1 for what is no lead byte.
std::size_t AnnouncedLength(unsigned char lead) {
  if (lead >= 0xC2 && lead <= 0xDF) return 2;
  if (lead >= 0xE0 && lead <= 0xEF) return 3;
  return lead >= 0xF0 && lead <= 0xF4 ? 4 : 1;
}

bool AreContinuations(std::string_view bytes) {
  return std::all_of(bytes.begin(), bytes.end(),
                     [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) == kFirstNonAscii; });
}

void AppendCharacter(std::u16string& text, char32_t character) {
  constexpr char32_t kFirstOfTwoUnits = 0x10000;
  if (character < kFirstOfTwoUnits) {
    text += static_cast<char16_t>(character);
    return;
  }
  character -= kFirstOfTwoUnits;
  text += static_cast<char16_t>(0xD800 + (character >> 10U));
  text += static_cast<char16_t>(0xDC00 + (character & 0x3FFU));
}

std::size_t DecodeUtf8(std::string_view bytes, bool isEnd, std::u16string& text) {
  const auto& characters = Windows1252Characters();
  std::size_t at = 0;
  while (at < bytes.size()) {
    const auto lead = static_cast<unsigned char>(bytes[at]);
    if (lead < kFirstNonAscii) {
      text += static_cast<char16_t>(lead);
      ++at;
      continue;
    }
    const std::string_view rest = bytes.substr(at);
    const bool isCut = AnnouncedLength(lead) > rest.size() && AreContinuations(rest.substr(1));
    if (isCut && !isEnd) break;
    const std::size_t length = automation::Utf8SequenceLength(rest);
    if (length == 1) {
      text += characters[lead];
    } else {
      AppendCharacter(text, automation::DecodeUtf8(rest));
    }
    at += length;
  }
  return at;
}

// The byte of a character; nothing (0 for another character than 0) when the code page lacks it.
bool Windows1252Byte(char16_t character, char& byte) {
  constexpr char16_t kFirstLatin1 = 0xA0;
  if (character < kFirstNonAscii || (character >= kFirstLatin1 && character <= 0xFF)) {
    byte = static_cast<char>(character);
    return true;
  }
  const auto& characters = Windows1252Characters();
  const auto* first = characters.data() + kFirstNonAscii;
  const auto* last = characters.data() + kFirstLatin1;
  const auto* found = std::find(first, last, character);
  byte = static_cast<char>(found - characters.data());
  return found != last;
}

bool EncodeWindows1252(std::u16string_view text, std::string& bytes) {
  const std::size_t start = bytes.size();
  bytes.resize(start + text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (Windows1252Byte(text[i], bytes[start + i])) continue;
    bytes.resize(start);
    return false;
  }
  return true;
}

void EncodeUtf16(std::u16string_view text, std::string& bytes) {
  std::size_t at = bytes.size();
  bytes.resize(at + 2 * text.size());
  for (const char16_t unit : text) {
    bytes[at++] = static_cast<char>(unit & 0xFFU);
    bytes[at++] = static_cast<char>(unit >> 8U);
  }
}

}  // namespace

std::size_t DecodeText(TextEncoding encoding, std::string_view bytes, bool isEnd, std::u16string& text) {
  switch (encoding) {
    case TextEncoding::Utf16: return DecodeUtf16(bytes, text);
    case TextEncoding::Utf8: return DecodeUtf8(bytes, isEnd, text);
    default: DecodeWindows1252(bytes, text); return bytes.size();
  }
}

bool EncodeText(TextEncoding encoding, std::u16string_view text, std::string& bytes) {
  switch (encoding) {
    case TextEncoding::Utf16: EncodeUtf16(text, bytes); return true;
    case TextEncoding::Utf8: bytes += automation::Utf16ToUtf8(text); return true;
    default: return EncodeWindows1252(text, bytes);
  }
}

}  // namespace hearthmake::vbscript
