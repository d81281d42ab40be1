#include "embedding/Embedded.hpp"

#include <filesystem>
#include <system_error>

#include "adapters/sqlite/BuildSchema.hpp"
#include "adapters/sqlite/FileFormat.hpp"
#include "automation/Error.hpp"
#include "embedding/DefaultPorts.hpp"
#include "foundation/Apartment.hpp"

namespace hearthmake::embedding {

namespace {

constexpr const char* kSource = "Embedded";

Options Completed(Options options) {
  if (options.dataFolder.empty())
    automation::Raise(automation::RuntimeError::InvalidProcedureCall, kSource, "no data folder");
  std::error_code error;
  options.dataFolder = std::filesystem::absolute(options.dataFolder, error).lexically_normal().string();
  std::filesystem::create_directories(options.dataFolder, error);
  if (error) {
    automation::Raise(automation::RuntimeError::PathFileAccess, kSource,
                      options.dataFolder + ": " + error.message());
  }
  return options;
}

std::shared_ptr<posix::DriveMap> DrivesOf(const Options& options) {
  auto drives = std::make_shared<posix::DriveMap>(options.winePrefix.empty()
                                                      ? posix::DriveMap::BuiltIn(options.dataFolder)
                                                      : posix::DriveMap::FromWinePrefix(options.winePrefix));
  for (const auto& [letter, folder] : options.drives) drives->SetDrive(letter, folder);
  return drives;
}

void MakeDatabase(const std::string& path) {
  if (sqlite::DetectFormat(path) != sqlite::FileFormat::Missing) return;
  try {
    sqlite::CreateBuildDatabase(path);
  } catch (const automation::Error& error) {
    // Another process may have been just as busy.
    if (error.Number() != static_cast<std::int32_t>(automation::RuntimeError::FileAlreadyExists)) throw;
  }
}

}  // namespace

struct Embedded::Parts {
  explicit Parts(const Options& options) : ports(options, DrivesOf(options)), apartment(ports.Ports()) {}

  DefaultPorts ports;
  Apartment apartment;
};

Embedded::Embedded(const Options& options) {
  const Options completed = Completed(options);
  m_parts = std::make_unique<Parts>(completed);
  MakeDatabase(*ToSystemPath(ToDosPath(completed.dataFolder + "/Build.mdb")));
}

Embedded::~Embedded() = default;

const platform::Platform& Embedded::Ports() const { return m_parts->ports.Ports(); }

std::string Embedded::ToDosPath(std::string_view systemPath) const {
  return m_parts->ports.Drives().FromPosix(systemPath);
}

std::optional<std::string> Embedded::ToSystemPath(std::string_view dosPath) const {
  return m_parts->ports.Drives().ToPosix(dosPath);
}

void Embedded::StopChildren() { m_parts->ports.StopChildren(); }

}  // namespace hearthmake::embedding
