#include "adapters/sourcesafe/SafeError.hpp"

#include <string>

namespace hearthmake::sourcesafe {

automation::Error SafeError(const automation::Error& error, std::string_view operation,
                            std::string_view about) {
  std::string text = error.Description();
  if (text.find(about) == std::string::npos) text += " (" + std::string(about) + ")";
  return {error.Number(), std::string(operation), text};
}

}  // namespace hearthmake::sourcesafe
