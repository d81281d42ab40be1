#pragma once

#include <string>

namespace hearthmake::catalog {

// A new GUID as a key: random, upper-case, with braces.
std::string NewKey();

}  // namespace hearthmake::catalog
