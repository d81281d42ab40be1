#include "vbscript/objects/EnvironmentText.hpp"

namespace hearthmake::vbscript {

std::string ExpandEnvironment(platform::SystemInfo& system, std::string_view text) {
  std::string expanded;
  while (!text.empty()) {
    const std::size_t start = text.find('%');
    expanded += text.substr(0, start);
    if (start == std::string_view::npos) break;
    text.remove_prefix(start);
    const std::size_t end = text.find('%', 1);
    const std::string_view name = end == std::string_view::npos ? "" : text.substr(1, end - 1);
    const auto value = system.EnvironmentVariable(name);
    // What is no variable stays with both its signs, as the system has it: "100% of %TEMP%" is not expanded.
    const std::size_t used = end == std::string_view::npos ? text.size() : end + 1;
    expanded += value ? std::string_view(*value) : text.substr(0, used);
    text.remove_prefix(used);
  }
  return expanded;
}

}  // namespace hearthmake::vbscript
