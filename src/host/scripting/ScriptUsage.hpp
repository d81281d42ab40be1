#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace hearthmake::host {

// What stands behind the word `script`: options of the script host, which begin with "//" and may stand
// anywhere, the file, and the arguments of the script.
struct ScriptUsage {
  std::string file;
  std::vector<std::string> arguments;
  std::int32_t timeoutSeconds = 0;  // 0: none
  bool isInteractive = true;

  // HostError for a missing file, an unknown option, or another script engine than VBScript.
  static ScriptUsage Parse(const std::vector<std::string>& words);
};

}  // namespace hearthmake::host
