#pragma once

#include <string>

#include "host/page/RunPage.hpp"

namespace hearthmake::host {

// The section of the page that tells all about each project.
std::string DetailsSection(const RunPage& page);

// The errors of a compiler's log with their source lines, or the message where it tells none.
std::string FailureText(const PageProject& project);

// A log as the page shows it: long ones are cut in the middle, with a note.
std::string LogText(const std::string& log, std::size_t most);

}  // namespace hearthmake::host
