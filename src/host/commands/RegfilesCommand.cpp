#include <fmt/format.h>

#include <filesystem>

#include "automation/Text.hpp"
#include "host/commands/Commands.hpp"
#include "host/commands/CompileOrder.hpp"

namespace hearthmake::host {

namespace {

// The folder as the library takes it; empty for its own.
std::string RelativeFolder(Session& session, const std::string& typed) {
  if (typed.empty()) return {};
  const std::string folder = session.DosPath(typed);
  std::error_code ignored;
  if (!std::filesystem::is_directory(session.PosixPath(folder), ignored)) {
    throw HostError(fmt::format("There is no folder {}.", typed),
                    "Name the folder that the files go to, and that their paths start at.");
  }
  return folder;
}

}  // namespace

ExitStatus RegfilesCommand(Session& session, const RegfilesArguments& arguments) {
  const auto build = session.OpenBuild(arguments.build);
  const std::string folder = RelativeFolder(session, arguments.relative);
  SetCompileOrder(*build);
  std::string files;
  build->GenerateRegisterBATfile(!folder.empty(), folder, files);
  const std::size_t lineEnd = files.find("\r\n");
  session.Out().Out(fmt::format("{}\n{}\n", Printable(session.PosixPath(files.substr(0, lineEnd))),
                                Printable(session.PosixPath(files.substr(lineEnd + 2)))));
  return ExitStatus::Done;
}

}  // namespace hearthmake::host
