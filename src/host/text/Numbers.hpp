#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace hearthmake::host {

// A whole number of 32 bits as people type it: decimal, or hexadecimal behind &H or 0x (eight digits are
// the 32 bits themselves, so &HFFFFFFFF is -1). HostError that names what the number is for.
std::int32_t ParseLong(std::string_view text, std::string_view what);

// An address as Visual Basic writes it: &H11000000
std::string AddressText(std::int32_t address);

// True when the text is decimal digits and nothing else.
bool IsDigits(std::string_view text);

// A number of things: "1 project", "2 projects".
std::string Counted(std::size_t count, std::string_view noun);

}  // namespace hearthmake::host
