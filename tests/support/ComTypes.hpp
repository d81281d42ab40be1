#pragma once

// The header that widl makes of the library's interface definition: what a host in C++ compiles against.

#include "com/Com.hpp"

#define interface struct
#include "HearthmakeTypes.h"
#undef interface
