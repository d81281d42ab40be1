#pragma once

#include <string_view>

#include "automation/Object.hpp"

namespace hearthmake::com {

// Objects of other servers of the machine, for scripts. The thread has a state (ThreadState) and COM.

// A new object of any class; null for one that the machine doesn't have.
automation::Ref<automation::Object> CreateOfMachine(std::string_view progId);

// What stands behind a file or another moniker; without a path, the running object of a class. Null where
// there is nothing.
automation::Ref<automation::Object> GetOfMachine(std::string_view path, std::string_view progId);

}  // namespace hearthmake::com
