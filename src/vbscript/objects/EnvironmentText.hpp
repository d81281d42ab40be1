#pragma once

#include <string>
#include <string_view>

#include "platform/SystemInfo.hpp"

namespace hearthmake::vbscript {

// The text with every %NAME% replaced by that variable; names that are not set stay as they stand.
std::string ExpandEnvironment(platform::SystemInfo& system, std::string_view text);

}  // namespace hearthmake::vbscript
