#pragma once

#include <string>
#include <string_view>

// Conversions at the border between the UTF-8 of the library and the texts of registry and settings
// files. None of them fails: what can't be converted becomes U+FFFD.
namespace hearthmake::posix {

bool IsUtf8(std::string_view bytes);

// The bytes of a text file as UTF-8: UTF-16 (either order) and UTF-8 when a byte order mark says so,
// else UTF-8 when the bytes are valid, else Windows-1252.
std::string DecodeText(std::string bytes);

// Little-endian UTF-16 bytes; an odd last byte is dropped.
std::string Utf8FromUtf16(std::string_view littleEndianBytes);
std::string Utf16FromUtf8(std::string_view utf8);

// Upper case, one character for one, as Windows folds names. Never by the locale of the process: whether
// two names are the same must not depend on who runs the program.
char32_t FoldCharacter(char32_t character);

// The form in which names are compared without regard to case.
std::string FoldCase(std::string_view utf8);

}  // namespace hearthmake::posix
