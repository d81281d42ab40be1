#pragma once

#include <cstdint>
#include <string_view>

namespace hearthmake::com {

// MsgBox of scripts: a box on the screen, and the number of the button that was chosen. Where nobody can see
// it (a service, a task without a user) it would wait for ever, so the message gets the answer of the button
// that it has ready.
std::int32_t ShowMessage(std::string_view prompt, std::int32_t style, std::string_view title);

}  // namespace hearthmake::com
