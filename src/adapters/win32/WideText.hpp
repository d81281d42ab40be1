#pragma once

#include <string>
#include <string_view>

namespace hearthmake::win32 {

// The core's UTF-8 and the UTF-16 of the system's calls. A lone surrogate survives both ways.
std::wstring ToWide(std::string_view text);
std::string ToUtf8(std::wstring_view text);

}  // namespace hearthmake::win32
