#pragma once

#include "com/Com.hpp"

namespace hearthmake::com {

// For every user of the machine, or for the one who runs it.
enum class Scope { Machine, User };

// Tells COM of the library: its classes with their ProgIDs, its interfaces and its type library. A failed
// registration takes back what it did. Unregister removes all of it and nothing else; what the library of
// the other word size registered stays.
HRESULT Register(Scope scope);
HRESULT Unregister(Scope scope);

}  // namespace hearthmake::com
