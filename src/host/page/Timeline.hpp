#pragma once

#include <string>

#include "host/page/RunPage.hpp"

namespace hearthmake::host {

// The section of the page that shows when the projects were at work; empty when none was.
std::string TimelineSection(const RunPage& page);

}  // namespace hearthmake::host
