#include "vb6/CommandLine.hpp"

#include <string_view>

#include "vb6/Text.hpp"

namespace hearthmake::vb6 {
namespace {

bool IsSwitch(std::string_view argument, std::string_view name) {
  return argument.size() > 1 && (argument[0] == '/' || argument[0] == '-') &&
         EqualNoCase(argument.substr(1), name);
}

bool IsProject(std::string_view argument) {
  constexpr std::string_view kExtension = ".vbp";
  return argument.size() > kExtension.size() &&
         EqualNoCase(argument.substr(argument.size() - kExtension.size()), kExtension);
}

}  // namespace

CommandLine CommandLine::Parse(const std::vector<std::string>& arguments) {
  CommandLine line;
  std::string ignored;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& argument = arguments[i];
    std::string* value = nullptr;
    if (argument == "--help" || IsSwitch(argument, "?")) {
      line.help = true;
    } else if (argument == "--version") {
      line.version = true;
    } else if (argument == "--skip-sources") {
      line.skipSources = true;
    } else if (IsSwitch(argument, "make") || IsSwitch(argument, "m") || IsSwitch(argument, "makedll")) {
      line.make = true;
    } else if (IsSwitch(argument, "out")) {
      value = &line.log;
    } else if (IsSwitch(argument, "outdir")) {
      value = &line.outFolder;
    } else if (IsSwitch(argument, "d")) {
      value = &ignored;  // conditional compilation decides nothing here
    } else if (line.project.empty() && IsProject(argument)) {
      line.project = argument;
    } else if (line.problem.empty()) {
      line.problem = "unknown argument '" + argument + "'";
    }
    if (value == nullptr) continue;
    if (i + 1 == arguments.size()) {
      line.problem = "nothing follows '" + argument + "'";
    } else {
      *value = arguments[++i];
    }
  }
  if (line.make && line.project.empty() && line.problem.empty())
    line.problem = "no project file (.vbp) is named";
  return line;
}

}  // namespace hearthmake::vb6
