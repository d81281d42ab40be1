#pragma once

#include <cstddef>
#include <optional>

namespace hearthmake::host {

enum class StandardStream { Input, Output, Error };

// Whether a person sits there.
bool IsTerminal(StandardStream stream);
// Whether it is a terminal that knows colours and can draw a line anew.
bool IsCapableTerminal(StandardStream stream);
// Columns of the terminal on standard output, now; nothing where there is none.
std::optional<std::size_t> TerminalWidth();

}  // namespace hearthmake::host
