#include <fmt/format.h>

#include "automation/Error.hpp"
#include "host/builds/AddedProjects.hpp"
#include "host/commands/Commands.hpp"
#include "host/packages/PackageQuestion.hpp"

namespace hearthmake::host {

namespace {

// False when it could not be added: the others are not to suffer from it.
bool AddFile(Session& session, Build& build, const std::string& file, const AddedProjects& added) {
  const std::size_t before = added.Count();
  try {
    build.Projects().Add(session.DosPath(file));
  } catch (const automation::Error& error) {
    session.Out().Note(fmt::format("{} was not added: {}", file, Printable(error.Description())));
    return false;
  }
  if (added.Count() == before) session.Out().Note(fmt::format("{} brought no new project.", file));
  return true;
}

}  // namespace

ExitStatus AddCommand(Session& session, const AddArguments& arguments) {
  const auto build = session.OpenBuild(arguments.build);
  bool isComplete = true;
  {
    const AddedProjects added(*build, session.Out());
    for (const std::string& file : arguments.files) {
      if (!AddFile(session, *build, file, added)) isComplete = false;
    }
    // A reference may be to a project that came later.
    if (added.Count() > 0) build->AutoDetectReferences();
    AskForPackages(session, *build, added.Projects());
  }
  session.Out().Out(fmt::format("{}: {}.\n", Printable(build->Name()), SizeText(*build)));
  return isComplete ? ExitStatus::Done : ExitStatus::WrongInput;
}

}  // namespace hearthmake::host
