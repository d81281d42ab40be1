#pragma once

#include <string_view>

namespace hearthmake::host {

// What the compiler said: the message of a failed compile without the library's words in front. Line ends as
// they came.
std::string_view CompilerWords(std::string_view message);

}  // namespace hearthmake::host
