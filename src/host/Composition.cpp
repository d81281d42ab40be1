#include "host/Composition.hpp"

#include "adapters/catalog/FileComPlusCatalogs.hpp"
#include "adapters/catalog/FileMtsCatalogs.hpp"
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
#include "host/CommandScriptHost.hpp"
#include "host/Console.hpp"
#include "host/HostEventPump.hpp"
#include "host/HostSystemInfo.hpp"
#include "host/Interrupt.hpp"
#include "interfaces/PublicClasses.hpp"

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

// What the scripts of a build are answered. A run waits for nobody: a message is shown and gets the answer
// that it has ready.
vbs::Services MakeServices() {
  vbs::Services services;
  services.createObject = [](std::string_view progId) -> automation::Ref<automation::Object> {
    const PublicClass* found = FindPublicClass(progId);
    return found == nullptr || found->create == nullptr ? nullptr : found->create();
  };
  services.showMessage = [](std::string_view prompt, std::int32_t style, std::string_view /*title*/) {
    Console(true).Note(Printable(prompt));
    return CommandScriptHost::DefaultAnswer(style);
  };
  services.isStopWanted = &Interrupt::IsRequested;
  return services;
}

}  // namespace

Composition::Composition(const HostSettings& settings)
    : m_drives(std::make_shared<posix::DriveMap>(settings.Drives())),
      m_catalog(std::make_shared<catalog::CatalogFile>(std::make_shared<posix::PosixSharedFile>(
          settings.DataFolder() + "/catalog.json", catalog::CatalogFile::kLargest))),
      m_apartment(FillPlatform(settings)) {}

Composition::~Composition() = default;

void Composition::OnTick(std::function<void()> tick) { m_pump->OnTick(std::move(tick)); }

platform::Platform Composition::FillPlatform(const HostSettings& settings) {
  const std::string prefix = settings.WinePrefix();
  sqlite::LeaveOutMemoryStatistics();
  platform::Platform ports;
  ports.registry = MakeRegistry(settings, prefix);
  const auto system = std::make_shared<HostSystemInfo>(settings, m_drives, ports.registry, !prefix.empty());
  posix::ProcessLauncherOptions launching;
  launching.systemFolder = system->SystemFolder();
  launching.wine = settings.WineProgram();
  launching.winePrefix = prefix;
  const auto launcher = std::make_shared<posix::PosixProcessLauncher>(*m_drives, launching);
  m_pump = std::make_shared<HostEventPump>(launcher);

  ports.system = system;
  ports.processes = launcher;
  ports.events = m_pump;
  ports.files = std::make_shared<posix::PosixFileSystem>(m_drives);
  ports.typeLibs = std::make_shared<typelib::TypeLibFileReader>(ports.files);
  ports.shell =
      std::make_shared<posix::PosixShell>(launcher, prefix.empty() ? MakeRegistrar(ports) : nullptr);
  ports.workspace = std::make_shared<sqlite::SqliteWorkspace>(
      [drives = m_drives](std::string_view path) { return drives->ToPosix(path).value_or(""); });
  ports.settings = std::make_shared<posix::IniSettingsStore>(posix::IniSettingsStore::DefaultPath());
  ports.clock = std::make_shared<posix::PosixClock>();
  AddCatalogs(ports);
  ports.scripts = std::make_shared<vbs::VbsScriptEngines>(ports, MakeServices());
  return ports;
}

void Composition::AddCatalogs(platform::Platform& ports) const {
  const auto components = std::make_shared<catalog::ComponentReader>(ports.files, ports.typeLibs);
  ports.mtsCatalogs = std::make_shared<catalog::FileMtsCatalogs>(m_catalog, components);
  ports.comPlusCatalogs = std::make_shared<catalog::FileComPlusCatalogs>(m_catalog, components);
}

}  // namespace hearthmake::host
