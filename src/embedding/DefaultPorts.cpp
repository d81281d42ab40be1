#include "embedding/DefaultPorts.hpp"

#include <utility>

#include "adapters/catalog/FileComPlusCatalogs.hpp"
#include "adapters/catalog/FileMtsCatalogs.hpp"
#include "adapters/git/GitSourceControl.hpp"
#include "adapters/posix/IniSettingsStore.hpp"
#include "adapters/posix/PosixClock.hpp"
#include "adapters/posix/PosixFileSystem.hpp"
#include "adapters/posix/PosixSharedFile.hpp"
#include "adapters/posix/PosixShell.hpp"
#include "adapters/posix/RegistryStore.hpp"
#include "adapters/posix/WineRegistry.hpp"
#include "adapters/sqlite/SqliteWorkspace.hpp"
#include "adapters/typelib/ComponentRegistration.hpp"
#include "adapters/typelib/TypeLibFileReader.hpp"
#include "adapters/vbs/VbsScriptEngines.hpp"
#include "embedding/EmbeddedSystemInfo.hpp"
#include "interfaces/PublicClasses.hpp"

namespace hearthmake::embedding {

namespace {

class WaitingPump final : public platform::EventPump {
 public:
  explicit WaitingPump(std::function<void()> onWait) : m_onWait(std::move(onWait)) {}

  void DeliverPending() override {
    if (m_onWait) m_onWait();
  }

 private:
  std::function<void()> m_onWait;
};

std::shared_ptr<platform::Registry> MakeRegistry(const Options& options) {
  if (!options.winePrefix.empty()) return std::make_shared<posix::WineRegistry>(options.winePrefix);
  return std::make_shared<posix::RegistryStore>(options.dataFolder + "/registry.reg");
}

struct ComponentRegistrar {
  std::shared_ptr<platform::Registry> registry;
  std::shared_ptr<platform::TypeLibReader> typeLibs;
  typelib::ComponentRegistration registration{*registry, *typeLibs};
};

// Components register themselves under Wine; without it, their type libraries tell what there is to
// register.
posix::PosixShell::Registrar MakeRegistrar(const platform::Platform& ports) {
  const auto registrar = std::make_shared<ComponentRegistrar>(ports.registry, ports.typeLibs);
  return [registrar](const posix::SelfRegistration& request) {
    if (request.isRemoval) {
      registrar->registration.Unregister(request.path);
    } else {
      registrar->registration.Register(request.path);
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

automation::Ref<automation::Object> CreateObject(std::string_view progId) {
  const PublicClass* found = FindCreatableClass(progId);
  return found == nullptr ? nullptr : found->create();
}

auto PosixPaths(const std::shared_ptr<posix::DriveMap>& drives) {
  return [drives](std::string_view path) { return drives->ToPosix(path).value_or(""); };
}

}  // namespace

DefaultPorts::DefaultPorts(const Options& options, std::shared_ptr<posix::DriveMap> drives)
    : m_drives(std::move(drives)),
      m_catalog(std::make_shared<catalog::CatalogFile>(std::make_shared<posix::PosixSharedFile>(
          options.dataFolder + "/catalog.json", catalog::CatalogFile::kLargest))) {
  AddMachine(options);
  AddFiles(options);
  AddCatalogs();
  AddSources(options);
  AddScripts(options);
}

void DefaultPorts::AddMachine(const Options& options) {
  m_ports.registry = MakeRegistry(options);
  const auto system = std::make_shared<EmbeddedSystemInfo>(options, m_drives, m_ports.registry);
  posix::ProcessLauncherOptions launching;
  launching.systemFolder = system->SystemFolder();
  launching.wine = options.wineProgram;
  launching.winePrefix = options.winePrefix;
  m_launcher = std::make_shared<posix::PosixProcessLauncher>(*m_drives, launching);
  m_ports.system = system;
  m_ports.processes = m_launcher;
  m_ports.events = std::make_shared<WaitingPump>(options.onWait);
  m_ports.clock = std::make_shared<posix::PosixClock>();
}

void DefaultPorts::AddFiles(const Options& options) {
  sqlite::LeaveOutMemoryStatistics();
  m_ports.files = std::make_shared<posix::PosixFileSystem>(m_drives);
  m_ports.typeLibs = std::make_shared<typelib::TypeLibFileReader>(m_ports.files);
  m_ports.shell = std::make_shared<posix::PosixShell>(
      m_launcher, options.winePrefix.empty() ? MakeRegistrar(m_ports) : nullptr);
  m_ports.workspace = std::make_shared<sqlite::SqliteWorkspace>(PosixPaths(m_drives));
  const std::string settings =
      options.settingsFile.empty() ? options.dataFolder + "/settings.ini" : options.settingsFile;
  m_ports.settings = std::make_shared<posix::IniSettingsStore>(settings);
}

void DefaultPorts::AddCatalogs() {
  const auto components = std::make_shared<catalog::ComponentReader>(m_ports.files, m_ports.typeLibs);
  m_ports.mtsCatalogs = std::make_shared<catalog::FileMtsCatalogs>(m_catalog, components);
  m_ports.comPlusCatalogs = std::make_shared<catalog::FileComPlusCatalogs>(m_catalog, components);
}

void DefaultPorts::AddSources(const Options& options) {
  git::Options sources;
  sources.onFile = [onFile = options.onSourceFile](const git::FileProgress& progress) {
    if (onFile) onFile(ToSourceFile(progress));
  };
  sources.isStopWanted = options.isStopWanted;
  m_ports.sources = std::make_shared<git::GitSourceControl>(PosixPaths(m_drives), std::move(sources));
}

void DefaultPorts::AddScripts(const Options& options) {
  vbs::Services services;
  services.createObject = &CreateObject;
  services.showMessage = options.onMessage;
  services.isStopWanted = options.isStopWanted;
  m_ports.scripts = std::make_shared<vbs::VbsScriptEngines>(m_ports, std::move(services));
}

}  // namespace hearthmake::embedding
