#include "host/commands/BuildImport.hpp"

#include <fmt/format.h>

#include <optional>
#include <string_view>

#include "adapters/sqlite/SqliteWorkspace.hpp"
#include "automation/Error.hpp"
#include "automation/Text.hpp"
#include "foundation/Apartment.hpp"
#include "host/moving/BuildJson.hpp"
#include "host/moving/BuildStore.hpp"
#include "host/run/RunLock.hpp"
#include "host/system/Interrupt.hpp"
#include "host/system/Places.hpp"

namespace hearthmake::host {

namespace {

// Far more than a build has.
constexpr std::uint64_t kLargest = 256 * 1024 * 1024;
constexpr std::size_t kLongestName = 30;

std::string ReadAll(Session& session, const std::string& file) {
  const std::string path = session.DosPath(file);
  session.Library();
  if (Ports().files->Details(path).size > kLargest) {
    throw HostError(fmt::format("{} can't be imported: it is too large for an exported build.", file));
  }
  std::string text = Ports().files->Read(path);
  if (text.starts_with("\xEF\xBB\xBF")) text.erase(0, 3);  // a mark that some editors leave
  return text;
}

BuildDocument ReadDocument(Session& session, const ImportArguments& arguments) {
  try {
    return ParseBuild(ReadAll(session, arguments.file));
  } catch (const HostError& error) {
    throw HostError(fmt::format("{} can't be imported, {}", arguments.file, error.what()),
                    "Nothing was written.");
  }
}

void SetName(BuildDocument& document, const ImportArguments& arguments) {
  if (!arguments.name.empty()) {
    document.build.at(ColumnPlace("Build", "Name")) = std::string(automation::Trim(arguments.name));
  }
  const std::string name = NameOf("Build", document.build);
  if (!automation::Trim(name).empty() && automation::Length(name) <= kLongestName) return;
  throw HostError(fmt::format("'{}' is no name of a build.", Printable(name)),
                  "Give it one of 1 to 30 characters with --name NAME. Nothing was written.");
}

// The build that the imported one takes the place of.
std::optional<std::int32_t> Replaced(platform::Database& database, const std::string& name,
                                     bool isReplacing) {
  std::optional<std::int32_t> id;
  for (const auto& [other, otherName] : StoredBuilds(database)) {
    if (!automation::EqualsIgnoreCase(automation::Trim(otherName), automation::Trim(name))) continue;
    if (!isReplacing) {
      throw HostError(
          fmt::format("There is a build '{}' already, its id is {}.", Printable(otherName), other),
          "Give the imported one another name with --name NAME, or put it in its place with --replace.");
    }
    if (id) {
      throw HostError(fmt::format("There are several builds '{}'.", Printable(otherName)),
                      "Delete those that are not needed first: hearthmake delete ID");
    }
    id = other;
  }
  return id;
}

}  // namespace

ExitStatus ImportBuild(Session& session, const ImportArguments& arguments) {
  BuildDocument document = ReadDocument(session, arguments);
  SetName(document, arguments);
  const std::string name = NameOf("Build", document.build);
  const std::string folder =
      arguments.into.empty() ? session.Settings().DataFolder() : AbsoluteSystemPath(arguments.into);
  const BuildDatabase target(folder, session.Library());
  target.RequireOrMake();
  const InterruptibleRun run;  // so that the log of the database is closed in order
  sqlite::SqliteWorkspace workspace([](std::string_view path) { return std::string(path); });
  const auto database = workspace.OpenDatabase(target.Path());
  workspace.BeginTrans();
  const auto replaced = Replaced(*database, name, arguments.replace);
  std::optional<RunLock> lock;
  if (replaced) lock.emplace(folder, *replaced, name);
  const std::int32_t id = StoreDocument(*database, document, replaced);
  if (Interrupt::IsRequested()) {
    throw HostError("Cancelled. Nothing was written.", "", ExitStatus::Cancelled);
  }
  workspace.CommitTrans();
  if (lock) lock->RemoveJournal();
  session.Out().Out(fmt::format("{} build {}, id {}: {}, in {}\n", replaced ? "Replaced" : "Imported",
                                Printable(name), id, SizeText(document), target.Path()));
  return ExitStatus::Done;
}

}  // namespace hearthmake::host
