#include "host/Composition.hpp"

#include "adapters/posix/IniSettingsStore.hpp"
#include "automation/Error.hpp"
#include "embedding/DefaultPorts.hpp"
#include "host/HostError.hpp"
#include "host/HostEventPump.hpp"
#include "host/posix/HostDrives.hpp"
#include "host/scripting/ScriptServices.hpp"
#include "host/system/Interrupt.hpp"

namespace hearthmake::host {

namespace {

// The library is waiting for the answer: it knows errors of its own kind only.
std::optional<std::int32_t> OverriddenVersion(const HostSettings& settings) {
  try {
    return settings.OsVersion();
  } catch (const HostError& error) {
    automation::Raise(automation::kInvalidValue, "SystemInfo", error.what());
  }
}

}  // namespace

struct Composition::System {
  std::shared_ptr<posix::DriveMap> drives;
  std::unique_ptr<embedding::DefaultPorts> ports;
};

Composition::Composition(const HostSettings& settings)
    : m_system(std::make_unique<System>()), m_apartment(FillPlatform(settings)) {}

Composition::~Composition() = default;

std::string Composition::ToDosPath(const std::string& systemPath) const {
  return m_system->drives->FromPosix(systemPath);
}

std::optional<std::string> Composition::ToSystemPath(const std::string& dosPath) const {
  return m_system->drives->ToPosix(dosPath);
}

const catalog::CatalogFile& Composition::Catalog() const { return m_system->ports->Catalog(); }

void Composition::OnTick(std::function<void()> tick) { m_pump->OnTick(std::move(tick)); }

platform::Platform Composition::FillPlatform(const HostSettings& settings) {
  m_system->drives = std::make_shared<posix::DriveMap>(DrivesOf(settings));
  m_pump = std::make_shared<HostEventPump>([system = m_system.get()] { system->ports->StopChildren(); });
  embedding::Options options;
  options.dataFolder = settings.DataFolder();
  options.settingsFile = posix::IniSettingsStore::DefaultPath();
  options.winePrefix = settings.WinePrefix();
  options.wineProgram = settings.WineProgram();
  options.temporaryFolder = [&settings] { return settings.TemporaryFolder(); };
  options.windowsVersion = [&settings] { return OverriddenVersion(settings); };
  options.onWait = [pump = m_pump] { pump->DeliverPending(); };
  options.onSourceFile = [this](const SourceFile& file) {
    if (m_onSourceFile) m_onSourceFile(file);
  };
  options.onTemporaryFolder = &Interrupt::RemoveAtEnd;
  options.onMessage = MakeScriptServices().showMessage;
  options.isStopWanted = &Interrupt::IsRequested;
  m_system->ports = std::make_unique<embedding::DefaultPorts>(options, m_system->drives);
  return m_system->ports->Ports();
}

}  // namespace hearthmake::host
