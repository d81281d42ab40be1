#include "host/Composition.hpp"

#include "adapters/catalog/FileComPlusCatalogs.hpp"
#include "adapters/catalog/FileMtsCatalogs.hpp"
#include "adapters/git/GitSourceControl.hpp"
#include "adapters/posix/IniSettingsStore.hpp"
#include "adapters/posix/PosixClock.hpp"
#include "adapters/posix/PosixFileSystem.hpp"
#include "adapters/posix/PosixProcessLauncher.hpp"
#include "adapters/posix/PosixSharedFile.hpp"
#include "adapters/posix/PosixShell.hpp"
#include "adapters/posix/RegistryStore.hpp"
#include "adapters/posix/WineRegistry.hpp"
#include "adapters/sqlite/SqliteWorkspace.hpp"
#include "adapters/typelib/ComponentRegistration.hpp"
#include "adapters/typelib/TypeLibFileReader.hpp"
#include "adapters/vbs/VbsScriptEngines.hpp"
#include "host/HostEventPump.hpp"
#include "host/Interrupt.hpp"
#include "host/ScriptServices.hpp"
#include "host/posix/HostDrives.hpp"
#include "host/posix/HostSystemInfo.hpp"

namespace hearthmake::host {

namespace {

std::shared_ptr<platform::Registry> MakeRegistry(const HostSettings& settings, const std::string& prefix) {
  if (prefix.empty()) return std::make_shared<posix::RegistryStore>(settings.DataFolder() + "/registry.reg");
  return std::make_shared<posix::WineRegistry>(prefix);
}

// Components register themselves under Wine; without it, their type libraries tell what there is to
// register.
posix::PosixShell::Registrar MakeRegistrar(const platform::Platform& ports) {
  return [registry = ports.registry, typeLibs = ports.typeLibs](const posix::SelfRegistration& request) {
    typelib::ComponentRegistration registration(*registry, *typeLibs);
    if (request.isRemoval) {
      registration.Unregister(request.path);
    } else {
      registration.Register(request.path);
    }
  };
}

SourceFile ToSourceFile(const git::FileProgress& progress) {
  SourceFile file;
  file.spec = progress.item;
  file.number = progress.number;
  file.count = progress.count;
  switch (progress.outcome) {
    case git::FileOutcome::Got: file.state = SourceFileState::Got; break;
    case git::FileOutcome::Unchanged: file.state = SourceFileState::Unchanged; break;
    case git::FileOutcome::Skipped: file.state = SourceFileState::Skipped; break;
  }
  return file;
}

}  // namespace

struct Composition::System {
  std::shared_ptr<posix::DriveMap> drives;
};

Composition::Composition(const HostSettings& settings)
    : m_system(std::make_unique<System>(std::make_shared<posix::DriveMap>(DrivesOf(settings)))),
      m_catalog(std::make_shared<catalog::CatalogFile>(std::make_shared<posix::PosixSharedFile>(
          settings.DataFolder() + "/catalog.json", catalog::CatalogFile::kLargest))),
      m_apartment(FillPlatform(settings)) {}

Composition::~Composition() = default;

std::string Composition::ToDosPath(const std::string& systemPath) const {
  return m_system->drives->FromPosix(systemPath);
}

std::optional<std::string> Composition::ToSystemPath(const std::string& dosPath) const {
  return m_system->drives->ToPosix(dosPath);
}

const catalog::CatalogFile& Composition::Catalog() const { return *m_catalog; }

void Composition::OnTick(std::function<void()> tick) { m_pump->OnTick(std::move(tick)); }

std::shared_ptr<platform::SourceControl> Composition::MakeSources() const {
  git::Options options;
  options.onFile = [this](const git::FileProgress& progress) {
    if (m_onSourceFile) m_onSourceFile(ToSourceFile(progress));
  };
  options.isStopWanted = &Interrupt::IsRequested;
  return std::make_shared<git::GitSourceControl>(
      [drives = m_system->drives](std::string_view path) { return drives->ToPosix(path).value_or(""); },
      std::move(options));
}

platform::Platform Composition::FillPlatform(const HostSettings& settings) {
  const std::string prefix = settings.WinePrefix();
  const std::shared_ptr<posix::DriveMap>& drives = m_system->drives;
  sqlite::LeaveOutMemoryStatistics();
  platform::Platform ports;
  ports.registry = MakeRegistry(settings, prefix);
  const auto system = std::make_shared<HostSystemInfo>(settings, drives, ports.registry, !prefix.empty());
  posix::ProcessLauncherOptions launching;
  launching.systemFolder = system->SystemFolder();
  launching.wine = settings.WineProgram();
  launching.winePrefix = prefix;
  const auto launcher = std::make_shared<posix::PosixProcessLauncher>(*drives, launching);
  m_pump = std::make_shared<HostEventPump>([launcher] { launcher->TerminateRunning(); });

  ports.system = system;
  ports.processes = launcher;
  ports.events = m_pump;
  ports.files = std::make_shared<posix::PosixFileSystem>(drives);
  ports.typeLibs = std::make_shared<typelib::TypeLibFileReader>(ports.files);
  ports.shell =
      std::make_shared<posix::PosixShell>(launcher, prefix.empty() ? MakeRegistrar(ports) : nullptr);
  ports.workspace = std::make_shared<sqlite::SqliteWorkspace>(
      [drives](std::string_view path) { return drives->ToPosix(path).value_or(""); });
  ports.settings = std::make_shared<posix::IniSettingsStore>(posix::IniSettingsStore::DefaultPath());
  ports.clock = std::make_shared<posix::PosixClock>();
  AddCatalogs(ports);
  ports.sources = MakeSources();
  ports.scripts = std::make_shared<vbs::VbsScriptEngines>(ports, MakeScriptServices());
  return ports;
}

void Composition::AddCatalogs(platform::Platform& ports) const {
  const auto components = std::make_shared<catalog::ComponentReader>(ports.files, ports.typeLibs);
  ports.mtsCatalogs = std::make_shared<catalog::FileMtsCatalogs>(m_catalog, components);
  ports.comPlusCatalogs = std::make_shared<catalog::FileComPlusCatalogs>(m_catalog, components);
}

}  // namespace hearthmake::host
