#include "host/moving/JetImport.hpp"

#include <fmt/format.h>

#include <fstream>

#include "adapters/jet/ReadingProcess.hpp"
#include "adapters/sqlite/BuildSchema.hpp"
#include "adapters/sqlite/SqliteWorkspace.hpp"
#include "automation/Error.hpp"
#include "host/HostError.hpp"
#include "host/posix/ImportedRows.hpp"
#include "host/system/Interrupt.hpp"

namespace hearthmake::host {

namespace {

std::vector<std::string> TableNames() {
  std::vector<std::string> names;
  for (const sqlite::TableSchema& table : sqlite::BuildTables()) names.emplace_back(table.name);
  return names;
}

[[noreturn]] void Refuse(const std::string& file, const automation::Error& error) {
  if (Interrupt::IsRequested()) throw HostError("Cancelled. Nothing was written.", "", ExitStatus::Cancelled);
  const bool isJet = error.Source() == "Jet";
  throw HostError(fmt::format("{} can't be imported{} {}", file, isJet ? "." : ":", error.Description()),
                  "Nothing was written.");
}

// Everything is in the file when this returns: closing takes the log in.
JetSummary Fill(const std::string& path, jet::ReadingProcess& reader, const JetProgress& progress) {
  sqlite::SqliteWorkspace workspace([](std::string_view same) { return std::string(same); });
  const auto database = workspace.OpenDatabase(path);
  workspace.BeginTrans();
  ImportedRows rows(*database, progress);
  reader.Read(rows);
  JetSummary summary = rows.Finish();
  summary.format = jet::VersionName(reader.Header().version);
  workspace.CommitTrans();
  database->Close();
  return summary;
}

}  // namespace

JetSummary ImportJet(const std::string& file, const std::string& target, bool isReplacing,
                     const JetProgress& progress, const std::string& readingProgram) {
  const InterruptibleRun run;
  try {
    jet::ReadingProcess::Options options;
    options.program = readingProgram;
    options.tables = TableNames();
    options.isStopWanted = &Interrupt::IsRequested;
    jet::ReadingProcess reader(file, std::move(options));
    const sqlite::NewBuildDatabase fresh(target);
    JetSummary summary = Fill(fresh.Path(), reader, progress);
    if (isReplacing) {
      fresh.PublishReplacing();
    } else {
      fresh.Publish();
    }
    return summary;
  } catch (const automation::Error& error) {
    Refuse(file, error);
  }
}

bool LooksLikeJet(const std::string& file) {
  std::ifstream stream(file, std::ios::binary);
  std::string bytes(jet::kHeaderSize, '\0');
  stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  return jet::ReadHeader(bytes).has_value();
}

std::string JetAdvice(const std::string& file) {
  return fmt::format(
      "Import it into another data folder: hearthmake import '{}' --into DIR\nThen work there with --data "
      "DIR.",
      file);
}

}  // namespace hearthmake::host
