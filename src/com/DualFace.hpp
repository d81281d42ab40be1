#pragma once

#include <vector>

#include "automation/Interface.hpp"
#include "com/Com.hpp"

namespace hearthmake::com {

// The vtable of a dual interface: seven entries that all have in common, then the members in interface order.
// Made once for each interface of the process and kept.
const std::vector<void*>& VtableOf(const automation::Interface& declared);

}  // namespace hearthmake::com
