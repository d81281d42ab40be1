#include <fmt/format.h>

#include "host/commands/Commands.hpp"
#include "host/sources/SourceProjects.hpp"
#include "host/system/Interrupt.hpp"

namespace hearthmake::host {

ExitStatus CheckinCommand(Session& session, const CheckinArguments& arguments) {
  const auto build = session.OpenBuild(arguments.build);
  ChosenSources(*build, {});  // without any there is nothing to check in to
  ExitStatus status = ExitStatus::Done;
  const InterruptibleRun interruptible;  // a file that is checked out is checked in, too
  for (const std::string& file : arguments.files) {
    if (Interrupt::IsRequested()) return ExitStatus::Cancelled;
    std::string reason;
    const std::string path = session.DosPath(file);
    if (build->SSProjects().CheckInFile(path, arguments.comment, arguments.keep, reason)) {
      session.Out().Out(fmt::format("Checked in {}{}\n", Printable(file),
                                    arguments.keep ? ", and kept it checked out" : ""));
    } else {
      session.Out().Note(fmt::format("{} was not checked in: {}", Printable(file), Printable(reason)));
      status = ExitStatus::Failed;
    }
  }
  return status;
}

}  // namespace hearthmake::host
