#include <fmt/format.h>

#include "host/builds/EditCycle.hpp"
#include "host/commands/Commands.hpp"
#include "host/commands/ProjectRemoval.hpp"
#include "host/page/LastRun.hpp"
#include "host/run/RewrittenFiles.hpp"
#include "host/run/RunLock.hpp"
#include "host/system/Places.hpp"

namespace hearthmake::host {

ExitStatus DeleteCommand(Session& session, const DeleteArguments& arguments) {
  const auto build = session.OpenBuild(arguments.build);
  const std::string name = build->Name();
  const std::string folder = session.Settings().DataFolder() + "/";
  const std::vector<std::string> files = {RewrittenFiles::FileName(build->Id()),
                                          LastRunFileName(build->Id())};
  RunLock lock(session.Settings().DataFolder(), build->Id(), name);
  RemoveProjects(*build, AllProjects(*build));
  EditCycle edit(*build);
  build->Delete();
  edit.Apply();
  lock.RemoveJournal();
  for (const std::string& file : files) RemoveFile(folder + file);
  session.Out().Out(fmt::format("Deleted build {}. Its project files are untouched.\n", Printable(name)));
  return ExitStatus::Done;
}

}  // namespace hearthmake::host
