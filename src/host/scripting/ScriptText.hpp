#pragma once

#include <string>
#include <string_view>

namespace hearthmake::host {

// Whether the bytes say by a byte order mark what they are.
bool HasMark(std::string_view bytes);

// The text of a script file from its bytes: UTF-16 or UTF-8 where a byte order mark says so, else
// Windows-1252. Never fails.
std::u16string DecodeScript(std::string_view bytes);

}  // namespace hearthmake::host
