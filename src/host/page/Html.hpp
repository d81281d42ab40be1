#pragma once

#include <string>
#include <string_view>

namespace hearthmake::host {

// Text that others wrote, for the content of an element or an attribute in either kind of quotes: cleaned,
// see CleanText, and with the characters escaped that mean something there.
std::string Html(std::string_view text);

}  // namespace hearthmake::host
