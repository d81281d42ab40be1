#pragma once

#include <string>

#include "host/Session.hpp"

namespace hearthmake::host {

// What to do about a failure of a run, in words for the machine at hand; empty when the message says
// enough. The project may be null.
std::string FailureAdvice(Session& session, Build& build, Project* project, const std::string& message);

// Where the last script that failed did so; empty when none has.
std::string ScriptAdvice(Build& build);

}  // namespace hearthmake::host
