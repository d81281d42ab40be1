#pragma once

#include <string>

#include "host/page/RunPage.hpp"

namespace hearthmake::host {

// The section of the page that draws the references of the projects, those that others imply left out.
std::string GraphSection(const RunPage& page);

}  // namespace hearthmake::host
