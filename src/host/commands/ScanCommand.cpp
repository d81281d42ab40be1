#include <fmt/format.h>

#include <filesystem>

#include "host/builds/AddedProjects.hpp"
#include "host/commands/Commands.hpp"

namespace hearthmake::host {

ExitStatus ScanCommand(Session& session, const ScanArguments& arguments) {
  const auto build = session.OpenBuild(arguments.build);
  const std::string folder = session.DosPath(arguments.folder);
  std::error_code ignored;
  if (!std::filesystem::is_directory(session.PosixPath(folder), ignored)) {
    throw HostError(fmt::format("There is no folder {}.", arguments.folder),
                    "Name the folder below which the project files are.");
  }
  std::size_t count = 0;
  {
    const AddedProjects added(*build, session.Out());
    build->CreateBuildFromPath(folder, arguments.tests);
    count = added.Count();
  }
  session.Out().Out(fmt::format("{}: {} added; {}.\n", Printable(build->Name()), count, SizeText(*build)));
  return ExitStatus::Done;
}

}  // namespace hearthmake::host
