#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace hearthmake::catalog {

// Lines of a JSON text, from 1: the parsed values don't remember where they stood.

// The line of a byte, counted from 1.
std::size_t LineAt(std::string_view text, std::size_t byte);

// The line at which the text is found to be no JSON; 1 for one that is sound.
std::size_t LineOfDamage(std::string_view text);

// The line on which a value begins, by its JSON pointer ("/packages/0/key", names unescaped). The text is
// sound JSON; 1 for what is not there.
std::size_t LineOfPlace(std::string_view text, std::string_view place);

// The byte, counted from 1, at which brackets first nest deeper than the limit; 0 when they don't. The text
// need not be sound.
std::size_t ByteTooDeep(std::string_view text, std::size_t limit);

}  // namespace hearthmake::catalog
