#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace hearthmake::vb6 {

// Letters of ASCII only: keywords and the names that decide something here have no others.
std::string Lower(std::string_view text);
bool EqualNoCase(std::string_view left, std::string_view right);
bool StartsWithNoCase(std::string_view text, std::string_view prefix);

// Without the blanks and tabs at both ends.
std::string_view Trim(std::string_view text);
// Without one pair of double quotes around it, if it has one.
std::string_view Unquote(std::string_view text);
std::vector<std::string_view> Split(std::string_view text, char separator);

// A whole decimal or hexadecimal number of digits only; nothing for anything else or too large a number.
std::optional<unsigned> ParseNumber(std::string_view text, int base = 10);
// Upper-case digits without leading zeros.
std::string Hex(unsigned value);

}  // namespace hearthmake::vb6
