#pragma once

#include <string>
#include <string_view>

namespace CLI {
class App;
}

namespace hearthmake::host {

// The manual page, in roff: a template in which @OPTIONS@ and @COMMANDS@ (each a line of its own) become
// what the command's words declare of themselves, and @VERSION@ and @DATE@ the two texts. HostError for a
// template without them.
std::string ManPage(const CLI::App& app, std::string_view pageTemplate, std::string_view version,
                    std::string_view date);

// Plain text as roff has to read it.
std::string RoffText(std::string_view text);

}  // namespace hearthmake::host
