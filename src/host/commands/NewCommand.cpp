#include <fmt/format.h>

#include "host/builds/EditCycle.hpp"
#include "host/commands/Commands.hpp"

namespace hearthmake::host {

ExitStatus NewCommand(Session& session, const NewArguments& arguments) {
  const auto build = session.NewBuild(arguments.name);
  EditCycle edit(*build);
  edit.Apply();
  session.Out().Out(fmt::format("Made build {}, id {}, in {}\n", Printable(build->Name()), build->Id(),
                                session.Database().Path()));
  return ExitStatus::Done;
}

}  // namespace hearthmake::host
