#pragma once

#include <string_view>

#include "automation/Object.hpp"

namespace hearthmake::host {

// What scripts may have of the machine, beside the classes of the library and of their engine. Only Windows
// has something.

// A new object by its ProgID; null for a class that is none of the machine's, or one that the engine brings.
automation::Ref<automation::Object> CreateOfMachine(std::string_view progId);

// What GetObject asks for; null where there is nothing.
automation::Ref<automation::Object> GetOfMachine(std::string_view path, std::string_view progId);

}  // namespace hearthmake::host
