#include "host/Composition.hpp"

#include "adapters/componentservices/AdminComPlusCatalogs.hpp"
#include "adapters/componentservices/AdminMtsCatalogs.hpp"
#include "adapters/dao/JetOrElseWorkspace.hpp"
#include "adapters/scriptcontrol/ChosenEngine.hpp"
#include "adapters/sourcesafe/SourceSafe.hpp"
#include "adapters/sqlite/SqliteWorkspace.hpp"
#include "adapters/vbs/VbsScriptEngines.hpp"
#include "adapters/win32/MessagePump.hpp"
#include "adapters/win32/RegistrySettingsStore.hpp"
#include "adapters/win32/Win32Clock.hpp"
#include "adapters/win32/Win32FileSystem.hpp"
#include "adapters/win32/Win32ProcessLauncher.hpp"
#include "adapters/win32/Win32Registry.hpp"
#include "adapters/win32/Win32Shell.hpp"
#include "adapters/win32/Win32SystemInfo.hpp"
#include "adapters/win32/Win32TypeLibReader.hpp"
#include "com/ThreadBorder.hpp"
#include "com/ThreadState.hpp"
#include "host/HostError.hpp"
#include "host/HostEventPump.hpp"
#include "host/Places.hpp"
#include "host/ScriptServices.hpp"
#include "host/windows/RunningChildren.hpp"

namespace hearthmake::host {

struct Composition::System {
  com::ThreadState::Attachment objects;  // goes after the apartment, whose objects need it
  win32::MessagePump messages;
};

Composition::Composition(const HostSettings& settings)
    : m_system(std::make_unique<System>()), m_apartment(FillPlatform(settings)) {}

Composition::~Composition() = default;

std::string Composition::ToDosPath(const std::string& systemPath) const {
  return AbsoluteSystemPath(systemPath);
}

std::optional<std::string> Composition::ToSystemPath(const std::string& dosPath) const { return dosPath; }

const catalog::CatalogFile& Composition::Catalog() const {
  throw HostError(
      "This command shows and compares catalog files only, and on Windows the catalogs are those of the "
      "machine.",
      "The window Component Services (dcomcnfg) shows what is installed; hearthmake deploy brings a build "
      "there.");
}

void Composition::OnTick(std::function<void()> tick) {
  m_pump->OnTick([messages = &m_system->messages, tick = std::move(tick)] {
    messages->DeliverPending();
    if (tick) tick();
  });
}

platform::Platform Composition::FillPlatform(const HostSettings& settings) {
  sqlite::LeaveOutMemoryStatistics();
  const auto launcher = std::make_shared<win32::Win32ProcessLauncher>();
  RememberLauncher(launcher);
  m_pump = std::make_shared<HostEventPump>([launcher] { launcher->TerminateRunning(); });
  OnTick(nullptr);

  platform::Platform ports;
  ports.registry = std::make_shared<win32::Win32Registry>();
  ports.system = std::make_shared<win32::Win32SystemInfo>(settings.DataFolder());
  ports.processes = launcher;
  ports.events = m_pump;
  ports.files = std::make_shared<win32::Win32FileSystem>();
  ports.typeLibs = std::make_shared<win32::Win32TypeLibReader>();
  ports.shell = std::make_shared<win32::Win32Shell>();
  ports.workspace = std::make_shared<dao::JetOrElseWorkspace>(
      std::make_shared<sqlite::SqliteWorkspace>([](std::string_view path) { return std::string(path); }));
  ports.settings = std::make_shared<win32::RegistrySettingsStore>();
  ports.clock = std::make_shared<win32::Win32Clock>();
  ports.sources = std::make_shared<sourcesafe::SourceSafe>();
  ports.mtsCatalogs = std::make_shared<componentservices::AdminMtsCatalogs>();
  ports.comPlusCatalogs = std::make_shared<componentservices::AdminComPlusCatalogs>();
  ports.scripts = std::make_shared<scriptcontrol::ControlOrElseEngines>(
      scriptcontrol::ChosenEngine(), com::ThreadBorder(),
      std::make_shared<vbs::VbsScriptEngines>(ports, MakeScriptServices()));
  return ports;
}

}  // namespace hearthmake::host
