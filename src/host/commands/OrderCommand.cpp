#include <fmt/format.h>

#include "host/commands/Commands.hpp"
#include "host/commands/CompileOrder.hpp"
#include "host/text/Json.hpp"

namespace hearthmake::host {

ExitStatus OrderCommand(Session& session, const OrderArguments& arguments) {
  const auto build = session.OpenBuild(arguments.build);
  SetCompileOrder(*build);
  auto json = nlohmann::ordered_json::array();
  std::string text;
  for (const auto& project : AllProjects(*build)) {
    json.push_back({{"id", project->Id()}, {"name", project->Name()}, {"path", project->ProjectPath()}});
    text += fmt::format("{:>4}  {}\n", json.size(), Printable(project->Name()));
  }
  session.Out().Out(arguments.json ? JsonText(json, 2) + "\n" : text);
  return ExitStatus::Done;
}

}  // namespace hearthmake::host
