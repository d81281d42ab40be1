#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include "host/run/RunPlan.hpp"

namespace hearthmake::host {

// How many are left out, and why: "12 up to date, 3 not asked for". Those that are switched off, which are
// never compiled, are not told of. Empty when there are no others.
std::string LeftOutCounts(const RunPlan& plan);
// A line for each project, in compile order: whether it is compiled, and why.
std::string WhyLines(const RunPlan& plan);
// The same of those only that are left out.
std::string LeftOutLines(const RunPlan& plan);

// Each as {project, id, choice, reason}.
nlohmann::ordered_json PlannedJson(const std::vector<const PlannedProject*>& projects);
// All that are left out.
nlohmann::ordered_json LeftOutJson(const RunPlan& plan);

}  // namespace hearthmake::host
