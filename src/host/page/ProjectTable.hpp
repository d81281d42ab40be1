#pragma once

#include <string>

#include "host/page/RunPage.hpp"

namespace hearthmake::host {

// The section of the page that lists the projects in compile order.
std::string TableSection(const RunPage& page);

// What is different about a project since the last run, a chip for each; empty when nothing is.
std::string ChangeChips(const PageProject& project);

}  // namespace hearthmake::host
