#pragma once

#include <string>

namespace hearthmake::host {

// What the help and the advice of the command say in each operating system's own words.
struct SystemTexts {
  const char* dataOption;                                // where data lies without --data
  const char* hostOption;                                // what `settings --host` holds, and where
  const char* registerWord;                              // how components are registered
  const char* catalogWord;                               // what `catalog` shows
  std::string (*makeFolder)(const std::string& folder);  // the command that makes one
};
const SystemTexts& Texts();

}  // namespace hearthmake::host
