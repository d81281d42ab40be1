#pragma once

#include <string>
#include <string_view>

namespace hearthmake::host {

// The text with each of the characters (ASCII) as its code in hexadecimal behind a percent sign: "%0A".
std::string PercentEscape(std::string_view text, std::string_view characters);

}  // namespace hearthmake::host
