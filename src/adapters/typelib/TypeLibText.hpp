#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace hearthmake::typelib {

// The sixteen bytes of a GUID as they lie in a file.
using GuidBytes = std::array<std::uint8_t, 16>;

inline constexpr std::string_view kNullGuid = "{00000000-0000-0000-0000-000000000000}";

// In registry form, upper-case: "{00020430-0000-0000-C000-000000000046}"
std::string FormatGuid(const GuidBytes& guid);

// Texts of type libraries are in the ANSI code page of whoever made them; this reads them as Windows-1252,
// whose five undefined bytes become the C1 controls, and gives UTF-8.
std::string DecodeText(std::string bytes);

}  // namespace hearthmake::typelib
