#include <fmt/format.h>

#include "host/commands/Commands.hpp"
#include "host/text/Json.hpp"

namespace hearthmake::host {

ExitStatus ListCommand(Session& session, const ListArguments& arguments) {
  auto json = nlohmann::ordered_json::array();
  std::string text;
  for (const auto& build : session.ListBuilds()) {
    json.push_back({{"id", build->Id()}, {"name", build->Name()}});
    text += fmt::format("{:>4}  {}\n", build->Id(), Printable(build->Name()));
  }
  if (text.empty()) text = "No builds yet. Make one with: hearthmake new NAME\n";
  session.Out().Out(arguments.json ? JsonText(json, 2) + "\n" : text);
  return ExitStatus::Done;
}

}  // namespace hearthmake::host
