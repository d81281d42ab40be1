#include "host/Composition.hpp"

#include "adapters/win32/MessagePump.hpp"
#include "adapters/win32/Win32ProcessLauncher.hpp"
#include "com/MachinePorts.hpp"
#include "com/ThreadState.hpp"
#include "host/HostError.hpp"
#include "host/HostEventPump.hpp"
#include "host/scripting/ScriptServices.hpp"
#include "host/system/Places.hpp"
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
  const auto launcher = std::make_shared<win32::Win32ProcessLauncher>();
  RememberLauncher(launcher);
  m_pump = std::make_shared<HostEventPump>([launcher] { launcher->TerminateRunning(); });
  OnTick(nullptr);

  platform::Platform ports = com::MachinePorts(settings.DataFolder());
  ports.processes = launcher;
  ports.events = m_pump;
  ports.scripts = com::MachineScripts(ports, MakeScriptServices());
  return ports;
}

}  // namespace hearthmake::host
