#pragma once

#include <string>
#include <string_view>

namespace hearthmake::vbscript {

// Case of UTF-16 text, unit by unit (surrogates are left alone), as Windows folds it for the scripts of
// Latin, Greek, Cyrillic and Armenian: one unit stays one unit.
char16_t LowerUnit(char16_t unit);
char16_t UpperUnit(char16_t unit);
std::u16string Lower(std::u16string_view text);
std::u16string Upper(std::u16string_view text);

bool EqualsIgnoreCase(std::u16string_view left, std::u16string_view right);
// Less than, equal to or greater than 0: by folded units, as a text comparison orders them.
int CompareIgnoreCase(std::u16string_view left, std::u16string_view right);
// The place of a text in another at or after start; npos when it is not there.
std::size_t FindIgnoreCase(std::u16string_view text, std::u16string_view sought, std::size_t start);

}  // namespace hearthmake::vbscript
