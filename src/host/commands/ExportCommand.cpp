#include <fmt/format.h>

#include <filesystem>
#include <string_view>

#include "adapters/sqlite/SqliteWorkspace.hpp"
#include "foundation/Apartment.hpp"
#include "host/commands/Commands.hpp"
#include "host/moving/BuildJson.hpp"
#include "host/moving/BuildStore.hpp"

namespace hearthmake::host {

namespace {

BuildDocument Load(Session& session, std::int32_t id, bool withPasswords) {
  sqlite::SqliteWorkspace workspace([](std::string_view path) { return std::string(path); });
  const auto database = workspace.OpenDatabase(session.Database().Path());
  // All of it as it is at one moment.
  const auto view = database->HoldView();
  std::vector<std::string> notes;
  BuildDocument document = LoadDocument(*database, id, withPasswords, notes);
  for (const std::string& note : notes) session.Out().Note(Printable(note) + " That is left out.");
  return document;
}

void Write(Session& session, const ExportArguments& arguments, const std::string& text) {
  const std::string path = session.DosPath(arguments.file);
  Ports().files->Replace(path, text);
  if (!arguments.passwords) return;
  namespace fs = std::filesystem;
  std::error_code ignored;  // where a disk keeps no permissions there are none to take away
  fs::permissions(session.PosixPath(path), fs::perms::owner_read | fs::perms::owner_write, ignored);
}

}  // namespace

ExitStatus ExportCommand(Session& session, const ExportArguments& arguments) {
  const auto build = session.OpenBuild(arguments.build);
  const BuildDocument document = Load(session, build->Id(), arguments.passwords);
  const std::string text = PrintBuild(document);
  if (arguments.file.empty()) {
    session.Out().Out(text);
    return ExitStatus::Done;
  }
  Write(session, arguments, text);
  session.Out().Out(fmt::format("Exported build {}: {}, to {}\n", Printable(build->Name()),
                                SizeText(document), arguments.file));
  return ExitStatus::Done;
}

}  // namespace hearthmake::host
