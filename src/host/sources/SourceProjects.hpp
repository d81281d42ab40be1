#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include "host/Session.hpp"
#include "sourcecontrol/SSProject.hpp"

namespace hearthmake::host {

using SourceList = std::vector<automation::Ref<SSProject>>;

// The source projects of the build in their order.
SourceList AllSources(Build& build);

// A source project by its path inside the database ($/Suite, also Suite) or its id. HostError when there is
// none, or when several have the path.
automation::Ref<SSProject> FindSource(Build& build, const std::string& pathOrId);

// Those that were named, each once; all when none was named. HostError when one is unknown, or when the build
// has none at all.
SourceList ChosenSources(Build& build, const std::vector<std::string>& names);

// Where their sources come from and go to, two lines each. Passwords never show.
std::string SourceLines(Session& session, Build& build);
nlohmann::ordered_json SourcesJson(Build& build);

}  // namespace hearthmake::host
