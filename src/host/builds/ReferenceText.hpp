#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

#include "host/Session.hpp"

namespace hearthmake::host {

// The references of a project, a line each: position, what it is, its name and version or file.
std::string ReferenceLines(Build& build, const Project& project);
nlohmann::ordered_json ReferencesJson(Build& build, const Project& project);

}  // namespace hearthmake::host
