#include "host/BuildDatabase.hpp"

#include <fmt/format.h>

#include <filesystem>
#include <system_error>

#include "adapters/sqlite/BuildSchema.hpp"
#include "adapters/sqlite/FileFormat.hpp"
#include "automation/Error.hpp"
#include "host/HostError.hpp"
#include "host/moving/JetImport.hpp"
#include "host/system/Places.hpp"

namespace hearthmake::host {

namespace {

using sqlite::FileFormat;

constexpr const char* kFileName = "Build.mdb";

std::string Joined(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text += (text.empty() ? "" : ", ") + name;
  return text;
}

// As the file system spells it: a database from elsewhere may be called build.mdb.
std::string PathIn(const std::string& dataFolder, const Composition& library) {
  const std::string dosPath = library.ToDosPath(dataFolder) + "\\" + kFileName;
  return library.ToSystemPath(dosPath).value_or(dataFolder + "/" + kFileName);
}

bool IsAlreadyThere(const automation::Error& error) {
  return error.Number() == static_cast<std::int32_t>(automation::RuntimeError::FileAlreadyExists);
}

}  // namespace

BuildDatabase::BuildDatabase(std::string dataFolder, const Composition& library)
    : m_dataFolder(std::move(dataFolder)), m_path(PathIn(m_dataFolder, library)) {}

void BuildDatabase::Require() const {
  if (sqlite::FormatBySize(m_path) == FileFormat::Missing) {
    throw HostError(fmt::format("There is no build database yet: {}", m_path),
                    "Make the first build with: hearthmake new NAME\n"
                    "(or say with --data DIR where the data is).");
  }
  RequireUsable();
}

void BuildDatabase::RequireOrMake() const {
  if (sqlite::FormatBySize(m_path) == FileFormat::Missing) Make();
  RequireUsable();
}

void BuildDatabase::MakeFolder() const {
  std::error_code error;
  std::filesystem::create_directories(m_dataFolder, error);
  if (error) {
    throw HostError(fmt::format("The data folder {} can't be made: {}.", m_dataFolder, error.message()),
                    "Choose another one with --data DIR.");
  }
}

void BuildDatabase::Make() const {
  MakeFolder();
  try {
    sqlite::CreateBuildDatabase(m_path);
  } catch (const automation::Error& failure) {
    if (IsAlreadyThere(failure)) return;  // another process was just as busy
    throw HostError(
        fmt::format("The build database can't be made: {}", failure.Description()),
        fmt::format("Make {} writable, or choose another data folder with --data DIR.", m_dataFolder));
  }
}

void BuildDatabase::RequireUsable() const {
  switch (sqlite::DetectFormat(m_path)) {
    case FileFormat::Sqlite: break;
    case FileFormat::Missing: throw HostError(fmt::format("The build database has gone: {}", m_path));
    case FileFormat::Jet:
      if (OpensJet(m_path)) return;
      throw HostError(
          fmt::format("The database is unavailable: {} is a Jet database, which is never changed here.",
                      m_path),
          JetAdvice(m_path));
    case FileFormat::Folder:
    case FileFormat::Empty:
    case FileFormat::Other:
      throw HostError(fmt::format("The database is unavailable: {} is no build database.", m_path),
                      "Move it away, or choose another data folder with --data DIR.");
    case FileFormat::Unreadable:
      throw HostError(fmt::format("The database is unavailable: {} can't be read.", m_path),
                      "Check its permissions and those of its folder.");
  }
  std::vector<std::string> missing;
  try {
    missing = sqlite::MissingColumns(m_path);
  } catch (const automation::Error& error) {
    throw HostError(fmt::format("The database is unavailable: {}", error.Description()), Diagnose());
  }
  if (missing.empty()) return;
  throw HostError(fmt::format("The database {} lacks: {}.", m_path, Joined(missing)),
                  "It was made by something else or is damaged. Put a good copy in its place, or choose "
                  "another data folder with --data DIR.");
}

std::string BuildDatabase::Diagnose() const {
  for (const std::string& path : {m_dataFolder, m_path}) {
    std::string why;
    if (!IsWritable(path, why)) return fmt::format("{} can't be written: {}.", path, why);
  }
  return {};
}

}  // namespace hearthmake::host
