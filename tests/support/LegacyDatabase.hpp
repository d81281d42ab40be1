#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>

namespace hearthmake::support {

// A build database that Jet itself has written (Jet 4); empty where there is none. The folder can be named by
// the environment.
inline std::string LegacyDatabase() {
  const char* named = std::getenv("HEARTHMAKE_LEGACY");
  const std::string folder = named != nullptr ? named : SOURCE_DIRECTORY "/../shared/legacy";
  std::error_code ignored;
  return std::filesystem::is_regular_file(folder + "/Build.mdb", ignored) ? folder + "/Build.mdb" : "";
}

}  // namespace hearthmake::support
