#include "com/MachinePorts.hpp"

#include <utility>

#include "adapters/componentservices/AdminComPlusCatalogs.hpp"
#include "adapters/componentservices/AdminMtsCatalogs.hpp"
#include "adapters/dao/JetOrElseWorkspace.hpp"
#include "adapters/scriptcontrol/ChosenEngine.hpp"
#include "adapters/sourcesafe/SourceSafe.hpp"
#include "adapters/sqlite/SqliteWorkspace.hpp"
#include "adapters/win32/RegistrySettingsStore.hpp"
#include "adapters/win32/Win32Clock.hpp"
#include "adapters/win32/Win32FileSystem.hpp"
#include "adapters/win32/Win32Registry.hpp"
#include "adapters/win32/Win32Shell.hpp"
#include "adapters/win32/Win32SystemInfo.hpp"
#include "adapters/win32/Win32TypeLibReader.hpp"
#include "com/ThreadBorder.hpp"

namespace hearthmake::com {

platform::Platform MachinePorts(std::string dataFolder) {
  sqlite::LeaveOutMemoryStatistics();
  platform::Platform ports;
  ports.registry = std::make_shared<win32::Win32Registry>();
  ports.system = std::make_shared<win32::Win32SystemInfo>(std::move(dataFolder));
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
  return ports;
}

std::shared_ptr<platform::ScriptEngines> MachineScripts(const platform::Platform& ports,
                                                        vbs::Services services) {
  return std::make_shared<scriptcontrol::ControlOrElseEngines>(
      scriptcontrol::ChosenEngine(), ThreadBorder(),
      std::make_shared<vbs::VbsScriptEngines>(ports, std::move(services)));
}

}  // namespace hearthmake::com
