#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace hearthmake::automation {

// Conversions between the core's UTF-8, the UTF-16 of automation values and Windows-1252, the bytes of
// files of the VB world.

// Whether every byte is below 128: then the text is the same in all three.
bool IsAscii(std::string_view text);
// Length of the sequence that a text, not empty, begins with. A byte that begins no valid sequence is a
// sequence of its own, of length 1.
std::size_t Utf8SequenceLength(std::string_view text);
// The code point that a text, not empty, begins with; a stray byte gives U+FFFD.
char32_t DecodeUtf8(std::string_view text);
void AppendUtf8(std::string& text, char32_t codePoint);

// Stray bytes become U+FFFD; a lone surrogate becomes its three bytes and back, so that nothing a script
// holds is lost.
std::u16string Utf8ToUtf16(std::string_view text);
std::string Utf16ToUtf8(std::u16string_view text);

// The character of a byte of the code page.
char16_t Windows1252Character(unsigned char byte);

// The five bytes that the code page leaves undefined are the C1 controls of the same value, so that
// every byte survives both ways. A character that the code page lacks becomes "?".
std::string Windows1252ToUtf8(std::string_view bytes);
std::string Utf8ToWindows1252(std::string_view text);

}  // namespace hearthmake::automation
