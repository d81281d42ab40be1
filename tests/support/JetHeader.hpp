#pragma once

#include <string>

namespace hearthmake::support {

// The beginning of a Jet file, as far as its format is told by it.
inline std::string JetHeader(char version, const std::string& engine = "Jet") {
  using namespace std::string_literals;
  return "\0\1\0\0Standard "s + engine + " DB\0"s + version + std::string(107, '\0');
}

}  // namespace hearthmake::support
