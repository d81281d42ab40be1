#include "com/Composition.hpp"

#include <string>

// Before the headers of Windows, whose macros would rename a member of it.
#include "adapters/win32/Win32SystemInfo.hpp"

#include "adapters/componentservices/AdminComPlusCatalogs.hpp"
#include "adapters/componentservices/AdminMtsCatalogs.hpp"
#include "adapters/dao/JetOrElseWorkspace.hpp"
#include "adapters/scriptcontrol/ChosenEngine.hpp"
#include "adapters/sourcesafe/SourceSafe.hpp"
#include "adapters/sqlite/BuildSchema.hpp"
#include "adapters/sqlite/FileFormat.hpp"
#include "adapters/sqlite/SqliteWorkspace.hpp"
#include "adapters/vbs/VbsScriptEngines.hpp"
#include "adapters/win32/MessagePump.hpp"
#include "adapters/win32/RegistrySettingsStore.hpp"
#include "adapters/win32/WideText.hpp"
#include "adapters/win32/Win32Clock.hpp"
#include "adapters/win32/Win32FileSystem.hpp"
#include "adapters/win32/Win32ProcessLauncher.hpp"
#include "adapters/win32/Win32Registry.hpp"
#include "adapters/win32/Win32Shell.hpp"
#include "adapters/win32/Win32TypeLibReader.hpp"
#include "automation/Error.hpp"
#include "com/Com.hpp"
#include "com/MachineClasses.hpp"
#include "com/MessageBox.hpp"
#include "com/ThreadBorder.hpp"
#include "interfaces/PublicClasses.hpp"

namespace hearthmake::com {

namespace {

using automation::Object;
using automation::Ref;

Ref<Object> CreateForScripts(std::string_view progId) {
  if (const PublicClass* found = FindCreatableClass(progId)) return found->create();
  return CreateOfMachine(progId);
}

// The library's folder gets an empty database when it has none. Where that can't be, the first use of the
// database tells of it.
void MakeMissingDatabase(const std::string& folder) {
  const std::string path = folder + "\\Build.mdb";
  if (sqlite::DetectFormat(path) != sqlite::FileFormat::Missing) return;
  try {
    sqlite::CreateBuildDatabase(path);
  } catch (const automation::Error&) {
    return;
  }
}

}  // namespace

platform::Platform Compose() {
  sqlite::LeaveOutMemoryStatistics();
  platform::Platform ports;
  ports.registry = std::make_shared<win32::Win32Registry>();
  ports.system = std::make_shared<win32::Win32SystemInfo>();
  ports.processes = std::make_shared<win32::Win32ProcessLauncher>();
  ports.events = std::make_shared<win32::MessagePump>();
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
  vbs::Services services;
  services.createObject = &CreateForScripts;
  services.getObject = &GetOfMachine;
  services.showMessage = &ShowMessage;
  ports.scripts = std::make_shared<scriptcontrol::ControlOrElseEngines>(
      scriptcontrol::ChosenEngine(), ThreadBorder(),
      std::make_shared<vbs::VbsScriptEngines>(ports, services));
  MakeMissingDatabase(ports.system->ComponentFolder());
  return ports;
}

}  // namespace hearthmake::com
