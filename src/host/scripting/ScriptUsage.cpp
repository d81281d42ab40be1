#include "host/scripting/ScriptUsage.hpp"

#include <fmt/format.h>

#include <charconv>
#include <string_view>

#include "automation/Text.hpp"
#include "host/HostError.hpp"

namespace hearthmake::host {

namespace {

constexpr std::int32_t kLongestTimeout = 32767;  // as the original host has it

std::int32_t TimeoutOf(std::string_view seconds) {
  std::int32_t value = 0;
  const auto [end, error] = std::from_chars(seconds.data(), seconds.data() + seconds.size(), value);
  const bool isNumber = error == std::errc() && end == seconds.data() + seconds.size();
  if (!isNumber || value < 0 || value > kLongestTimeout) {
    throw HostError(fmt::format("'//T:{}' is no time-out.", seconds),
                    fmt::format("Give whole seconds up to {}: //T:30", kLongestTimeout));
  }
  return value;
}

void TakeOption(ScriptUsage& usage, const std::string& word) {
  const std::string option = automation::Lower(word.substr(2));
  if (option.starts_with("t:")) {
    usage.timeoutSeconds = TimeoutOf(std::string_view(option).substr(2));
  } else if (option == "b" || option == "i") {
    usage.isInteractive = option == "i";
  } else if (option.starts_with("e:")) {
    if (option == "e:vbscript" || option == "e:vbs") return;
    throw HostError(fmt::format("There is no script engine '{}'.", word.substr(4)),
                    "VBScript is the language that is spoken here.");
  } else if (option != "nologo" && option != "logo" && option != "u" && option != "d" && option != "x") {
    throw HostError(fmt::format("Unknown option '{}'.", word), "See: hearthmake script --help");
  }
}

}  // namespace

ScriptUsage ScriptUsage::Parse(const std::vector<std::string>& words) {
  ScriptUsage usage;
  for (const std::string& word : words) {
    if (word.starts_with("//")) {
      TakeOption(usage, word);
    } else if (!usage.file.empty()) {
      usage.arguments.push_back(word);
    } else if (word.starts_with('-')) {
      throw HostError(fmt::format("Unknown option '{}'.", word),
                      "Options of hearthmake stand before the word script.");
    } else {
      usage.file = word;
    }
  }
  if (usage.file.empty()) {
    throw HostError("The script file is missing.", "See: hearthmake script --help");
  }
  return usage;
}

}  // namespace hearthmake::host
