#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace hearthmake::host {

// How files are got (platform::SourceFlags), as people type and read it.

// Names parted by commas (readonly,recursive), or a number as ParseLong takes it; "none" is 0. HostError that
// lists the names, also where two of them exclude each other.
std::int32_t ParseSourceFlags(std::string_view text);

// "readonly,recursive", with the number of what has no name behind a plus; "none" for 0.
std::string SourceFlagsText(std::int32_t flags);

}  // namespace hearthmake::host
