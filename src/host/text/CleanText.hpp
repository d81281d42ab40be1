#pragma once

#include <string>
#include <string_view>

namespace hearthmake::host {

// Text that others wrote, fit for files that programs read: valid UTF-8 (stray bytes become U+FFFD), line
// ends as line feeds, and in place of control characters the sign that Unicode has for them.
std::string CleanText(std::string_view text);
// The same in one line, with blanks for line ends and tabs.
std::string CleanLine(std::string_view text);

}  // namespace hearthmake::host
