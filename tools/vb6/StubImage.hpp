#pragma once

#include <string>
#include <vector>

#include "vb6/ResourceSection.hpp"

namespace hearthmake::vb6 {

// A copy of an image that another compiler linked, with the resources in a section of its own. Error 57 for
// bytes that are no image, that have resources already, or whose headers leave no room.
std::string WithResources(const std::string& image, const std::vector<PeResource>& resources);

}  // namespace hearthmake::vb6
