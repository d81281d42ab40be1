#pragma once

#include <nlohmann/json_fwd.hpp>

#include "host/Console.hpp"

namespace hearthmake::host {

// An event for programs: one line of JSON on standard output, with the event's name and time (UTC) and what
// came with it; the first one of the process also tells the version of the format. docs/events.schema.json
// describes them all.
void PrintEvent(const Console& console, const char* event, const nlohmann::ordered_json& details);

// Milliseconds are enough, and a shorter line.
double RoundedSeconds(double seconds);

}  // namespace hearthmake::host
