#pragma once

#include <string>
#include <string_view>

namespace hearthmake::host {

// How one text becomes another, row by row, as a unified diff with three rows around each change, each line
// ended by a line feed; empty when they are the same. Carriage returns are left out of the lines, though rows
// that differ in their line ends alone differ.
std::string UnifiedDiff(std::string_view before, std::string_view after, std::string_view beforeName,
                        std::string_view afterName);

}  // namespace hearthmake::host
