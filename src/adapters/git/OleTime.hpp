#pragma once

#include <cstdint>

namespace hearthmake::git {

// Seconds since 1970, UTC, as a local OLE date.
double OleTime(std::int64_t seconds);

}  // namespace hearthmake::git
