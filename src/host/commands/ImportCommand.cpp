#include <fmt/format.h>

#include <filesystem>
#include <fstream>
#include <string_view>

#include "adapters/sqlite/FileFormat.hpp"
#include "automation/Text.hpp"
#include "host/BuildDatabase.hpp"
#include "host/commands/BuildImport.hpp"
#include "host/commands/Commands.hpp"
#include "host/moving/JetImport.hpp"
#include "host/run/RunJournal.hpp"
#include "host/system/Places.hpp"

namespace hearthmake::host {

namespace {

namespace fs = std::filesystem;

std::string FolderOf(Session& session, const ImportArguments& arguments) {
  return arguments.into.empty() ? session.Settings().DataFolder() : AbsoluteSystemPath(arguments.into);
}

std::string ListOf(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "" : ", ") + Printable(name);
  return text;
}

void RequirePlace(const std::string& file, const BuildDatabase& target, bool isReplacing) {
  std::error_code ignored;
  if (!fs::exists(file, ignored)) throw HostError(fmt::format("There is no file {}", file));
  if (fs::equivalent(file, target.Path(), ignored)) {
    throw HostError(fmt::format("{} would take its own place.", file),
                    "Import it into another data folder with --into DIR, or move it away first.");
  }
  if (isReplacing || !fs::exists(fs::symlink_status(target.Path(), ignored))) return;
  throw HostError(
      fmt::format("There is a database already: {}", target.Path()),
      "Choose another data folder with --into DIR; --replace puts the imported one in its place.");
}

// By what it is called, or by what it begins with.
bool IsExportedBuild(const std::string& file) {
  if (LooksLikeJet(file)) return false;
  if (automation::EqualsIgnoreCaseAscii(fs::path(file).extension().string(), ".json")) return true;
  std::ifstream stream(file, std::ios::binary);
  char first = 0;
  return stream >> first && first == '{';
}

// The data folder of an import: one that was made for it goes with its failure.
class ImportFolder {
 public:
  ImportFolder(std::string path, const BuildDatabase& target) : m_path(std::move(path)) {
    std::error_code ignored;
    m_isOurs = !fs::exists(m_path, ignored);
    target.MakeFolder();
  }
  ImportFolder(const ImportFolder&) = delete;
  ImportFolder& operator=(const ImportFolder&) = delete;
  ~ImportFolder() {
    std::error_code ignored;
    if (m_isOurs) fs::remove(m_path, ignored);
  }
  void Keep() { m_isOurs = false; }

 private:
  std::string m_path;
  bool m_isOurs;
};

// One line that is drawn anew, for those who wait.
class ProgressLine {
 public:
  explicit ProgressLine(const Console& console) : m_console(console) {}
  ProgressLine(const ProgressLine&) = delete;
  ProgressLine& operator=(const ProgressLine&) = delete;
  ~ProgressLine() {
    if (m_isDrawn) m_console.Out("\r\x1b[K");
  }

  void Show(const std::string& table, std::size_t rows) {
    if (!m_console.CanRedraw()) return;
    m_console.Out(fmt::format("\r{}: {}\x1b[K", table, rows));
    m_isDrawn = true;
  }

 private:
  const Console& m_console;
  bool m_isDrawn = false;
};

void PrintSummary(const Session& session, const std::string& file, const std::string& target,
                  const JetSummary& summary) {
  std::string text = fmt::format("Imported {} ({}) into {}\n", file, summary.format, target);
  for (const auto& [table, rows] : summary.tables) text += fmt::format("{:>8}  {}\n", rows, table);
  if (!summary.builds.empty()) text += "Builds\n";
  for (const auto& [id, name] : summary.builds) text += fmt::format("{:>8}  {}\n", id, Printable(name));
  if (!summary.leftOut.empty()) text += "Not taken over: " + ListOf(summary.leftOut) + "\n";
  if (!summary.missing.empty()) text += "Not in the file, left empty: " + ListOf(summary.missing) + "\n";
  session.Out().Out(text);
}

ExitStatus ImportJetFile(Session& session, const ImportArguments& arguments) {
  if (!arguments.name.empty()) {
    throw HostError("--name is for an exported build; a database keeps the names of its builds.");
  }
  const std::string folder = FolderOf(session, arguments);
  const BuildDatabase target(folder, session.Library());
  RequirePlace(arguments.file, target, arguments.replace);
  ImportFolder made(folder, target);
  JetSummary summary;
  {
    ProgressLine line(session.Out());
    summary = ImportJet(
        arguments.file, target.Path(), arguments.replace,
        [&](const std::string& table, std::size_t rows) { line.Show(table, rows); }, ProgramPath());
  }
  made.Keep();
  // The ids may be those of builds that have gone with the old database.
  for (const auto& [id, name] : summary.builds) RemoveFile(folder + "/" + RunJournal::FileName(id));
  PrintSummary(session, arguments.file, target.Path(), summary);
  return ExitStatus::Done;
}

}  // namespace

ExitStatus ImportCommand(Session& session, const ImportArguments& arguments) {
  ImportArguments meant = arguments;
  if (session.DosPath(arguments.file) == arguments.file) meant.file = session.PosixPath(arguments.file);
  if (IsExportedBuild(meant.file)) return ImportBuild(session, arguments);
  if (sqlite::DetectFormat(meant.file) == sqlite::FileFormat::Sqlite) {
    throw HostError(fmt::format("{} is a build database of this command already.", arguments.file),
                    "Use its folder with --data DIR, or move single builds with export and import.");
  }
  return ImportJetFile(session, meant);
}

}  // namespace hearthmake::host
