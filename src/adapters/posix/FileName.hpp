#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// What two spellings of a file name have in common. A name is UTF-8; bytes that are not are read as
// Windows-1252, the undefined ones as C1 controls, so that names of older days have letters too.

namespace hearthmake::posix {

// Equal names without regard to case have equal hashes.
std::uint32_t FoldedHash(std::string_view name);
bool FoldedEqual(std::string_view left, std::string_view right);

// The name in UTF-8.
std::string FileNameToUtf8(std::string_view name);

// The name without the dots and blanks at its end, as Windows takes it; a name of nothing else stays.
std::string_view WithoutTrailingDots(std::string_view name);

}  // namespace hearthmake::posix
