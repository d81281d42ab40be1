#pragma once

#include <functional>

#include "host/Session.hpp"
#include "host/run/RunDisplay.hpp"

namespace hearthmake::host {

// Does something with source control, as far as Ctrl-C lets it, and shows its events and files. False when
// it was cancelled; HostError (the build failed) when it failed.
bool FollowSources(Session& session, Build& build, bool asJson,
                   const std::function<void(RunDisplay& display)>& work);

// Takes the latest version of the build's sources, in the host's own step before a run. As FollowSources.
bool TakeLatestSources(Session& session, Build& build, bool asJson);

}  // namespace hearthmake::host
