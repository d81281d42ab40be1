#include <fmt/format.h>

#include "automation/Error.hpp"
#include "host/commands/Commands.hpp"
#include "host/sources/SourceProjects.hpp"

namespace hearthmake::host {

namespace {

// False when it could not be labelled: the others are not to suffer from it.
bool PutLabel(const Session& session, SSProject& source, const LabelArguments& arguments) {
  const std::string name = Printable(source.Project());
  try {
    source.Label(arguments.label, arguments.comment);
    session.Out().Out(fmt::format("{}: {}\n", name, Printable(arguments.label)));
    return true;
  } catch (const automation::Error& error) {
    session.Out().Note(fmt::format("{} was not labelled: {}", name, Printable(error.Description())));
    return false;
  }
}

}  // namespace

ExitStatus LabelCommand(Session& session, const LabelArguments& arguments) {
  const auto build = session.OpenBuild(arguments.build);
  ExitStatus status = ExitStatus::Done;
  for (const auto& source : ChosenSources(*build, {})) {
    if (!PutLabel(session, *source, arguments)) status = ExitStatus::Failed;
  }
  return status;
}

}  // namespace hearthmake::host
