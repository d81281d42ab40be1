#pragma once

// The headers of COM's automation, without the macros that get in the way of our own names.

#include <windows.h>

#include <oleauto.h>

#undef GetObject
#undef SetEnvironmentVariable
#undef interface
