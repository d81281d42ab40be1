#pragma once

#include <windows.h>

#include <cstdint>

namespace hearthmake::win32 {

// The system's times: 100 nanoseconds since 1601, UTC.

// As a local OLE date, to the second.
double ToLocalOleDate(const FILETIME& time);
// Nanoseconds since 1970, UTC.
std::int64_t ToUnixNanoseconds(const FILETIME& time);

}  // namespace hearthmake::win32
