#pragma once

#include <string>
#include <string_view>

namespace hearthmake::vb6 {

// Files of Visual Basic are Windows-1252; inside, text is UTF-8. The five bytes that the code page leaves
// undefined stand for the C1 controls of the same number, so that every byte survives the way there and back.
std::string ToUtf8(std::string_view bytes);

// A character that the code page lacks, or a byte that is not UTF-8, becomes '?'.
std::string ToWindows1252(std::string_view text);

// The character of a byte, as a code point.
char16_t CharacterOf(unsigned char byte);

}  // namespace hearthmake::vb6
