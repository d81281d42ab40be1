#pragma once

#include <string>
#include <string_view>

namespace hearthmake::vbscript {

// How the bytes of a text stream stand for characters.
enum class TextEncoding {
  Windows1252,
  Utf16,  // little-endian
  Utf8,   // for reading, bytes that are no UTF-8 are taken as Windows-1252
};

inline constexpr std::string_view kUtf16Mark = "\xFF\xFE";

// Appends the characters of bytes to a text; returns how many bytes were used. Those of a character that is
// cut at the end are left, unless no more bytes will come.
std::size_t DecodeText(TextEncoding encoding, std::string_view bytes, bool isEnd, std::u16string& text);

// Appends the bytes of a text. False where a character has none in the encoding; nothing is appended then.
bool EncodeText(TextEncoding encoding, std::u16string_view text, std::string& bytes);

}  // namespace hearthmake::vbscript
