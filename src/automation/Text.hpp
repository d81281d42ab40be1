#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace hearthmake::automation {

// Small operations on UTF-8 text in Visual Basic's sense. A blank is U+0020 only.

std::string_view Trim(std::string_view text);

// How many characters (code points) a text has. A byte that is no UTF-8 counts as a character.
std::size_t Length(std::string_view text);
// The first count characters (code points). A byte that is no UTF-8 counts as a character.
std::string_view Left(std::string_view text, std::size_t count);
// The last count bytes of a text; file extensions and the like.
std::string_view Right(std::string_view text, std::size_t count);

// Lower case of ASCII and of the letters of Latin-1, Latin Extended-A, Greek and Cyrillic: enough for
// names of the VB world, where text is of one single-byte code page.
std::string Lower(std::string_view text);
// ASCII letters only: ids and the like.
std::string Upper(std::string_view text);
// For file extensions and other words that are ASCII by definition.
bool EqualsIgnoreCaseAscii(std::string_view a, std::string_view b);

// Equality without regard to case, as keyed lists and file names compare.
bool EqualsIgnoreCase(std::string_view a, std::string_view b);

// Every occurrence of from replaced by to, left to right.
std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to);

// The number that a text begins with, as Val reads it: blanks are skipped, "&H" opens hexadecimal
// digits (up to eight, read as 32-bit signed; four or fewer as 16-bit signed unless "&" follows),
// what is no number ends it. No number gives 0.
double Val(std::string_view text);

// A whole number in decimal, or in upper-case hexadecimal (negative numbers as 32 bits).
std::string Decimal(std::int32_t value);
std::string Hex(std::int32_t value);

}  // namespace hearthmake::automation
