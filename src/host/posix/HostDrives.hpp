#pragma once

#include "adapters/posix/DriveMap.hpp"
#include "host/HostSettings.hpp"

namespace hearthmake::host {

// The drives of the Wine prefix, or the built-in ones, with those that were added. HostError for what is no
// drive or no prefix.
posix::DriveMap DrivesOf(const HostSettings& settings);

}  // namespace hearthmake::host
