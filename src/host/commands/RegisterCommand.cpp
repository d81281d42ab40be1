#include <fmt/format.h>

#include <optional>

#include "host/builds/BinaryState.hpp"
#include "host/builds/ChosenProjects.hpp"
#include "host/commands/Commands.hpp"
#include "host/system/Places.hpp"

namespace hearthmake::host {

namespace {

// What keeps a project from being registered or unregistered, if anything does.
std::optional<Outcome> Obstacle(const BinaryState& before) {
  if (!before.isComponent) return Outcome{"nothing to do, it is not an ActiveX component"};
  if (!before.isThere) return Outcome{fmt::format("there is no binary yet: {}", before.path), true};
  return std::nullopt;
}

// Why our own registry was not changed as it should; programs that register themselves under Wine are not
// waited for.
Outcome Refused(const BinaryState& state) {
  return {state.problem.empty() ? fmt::format("the registry could not be changed for {}", state.path)
                                : state.problem,
          true};
}

Outcome RegisterProject(Project& project, bool isInBackground) {
  const BinaryState before = ReadBinary(project);
  if (const auto obstacle = Obstacle(before)) return *obstacle;
  project.Register();
  if (isInBackground) return {fmt::format("registration started, {}", before.path)};
  const BinaryState after = ReadBinary(project);
  if (!after.IsRegistered()) return Refused(after);
  return {fmt::format("{} {}", before.IsRegistered() ? "registered again," : "registered", after.path)};
}

Outcome UnregisterProject(Project& project, bool isInBackground) {
  const BinaryState before = ReadBinary(project);
  if (const auto obstacle = Obstacle(before)) return *obstacle;
  project.UnRegister();
  if (isInBackground) return {fmt::format("removal started, {}", before.path)};
  const BinaryState after = ReadBinary(project);
  if (!after.problem.empty() || !after.registeredPath.empty()) return Refused(after);
  if (before.registeredPath.empty()) return {"it was not registered"};
  return {fmt::format("unregistered {}", before.path)};
}

ExitStatus ForChosen(Session& session, const RegisterArguments& arguments, bool isRemoval) {
  const auto build = session.OpenBuild(arguments.build);
  const bool isInBackground = RegistersInBackground(session.Settings().WinePrefix());
  return DoForEach(session, ChosenProjects(*build, arguments.projects), [&](Project& project) {
    return isRemoval ? UnregisterProject(project, isInBackground) : RegisterProject(project, isInBackground);
  });
}

}  // namespace

ExitStatus RegisterCommand(Session& session, const RegisterArguments& arguments) {
  return ForChosen(session, arguments, false);
}

ExitStatus UnregisterCommand(Session& session, const RegisterArguments& arguments) {
  return ForChosen(session, arguments, true);
}

}  // namespace hearthmake::host
