#pragma once

// The headers of COM as this folder wants them: without the macros that get in the way of our own names.

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <ocidl.h>
#include <oleauto.h>
#include <olectl.h>

#undef GetObject
#undef interface

#include <string_view>

namespace hearthmake::com {

// An id that we wrote ourselves: "{ADFA1845-…}". One that is none (a class without interface of its own
// leaves it empty) gives the null id.
GUID ParseGuid(std::string_view text);

}  // namespace hearthmake::com
