#include "com/Composition.hpp"

#include <string>

// Before the headers of Windows, whose macros would rename a member of it.
#include "adapters/win32/Win32SystemInfo.hpp"

#include "adapters/componentservices/AdminComPlusCatalogs.hpp"
#include "adapters/componentservices/AdminMtsCatalogs.hpp"
#include "adapters/dao/JetOrElseWorkspace.hpp"
#include "adapters/scriptcontrol/ControlOrElseEngines.hpp"
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
#include "com/ThreadBorder.hpp"
#include "com/ThreadState.hpp"
#include "interfaces/PublicClasses.hpp"

namespace hearthmake::com {

namespace {

using automation::Object;
using automation::Ref;

// Any class of the machine; null for one that it doesn't have.
Ref<Object> CreateOfMachine(std::string_view progId) {
  CLSID id = {};
  if (FAILED(CLSIDFromProgID(win32::ToWide(progId).c_str(), &id))) return nullptr;
  void* made = nullptr;
  if (FAILED(CoCreateInstance(id, nullptr, CLSCTX_SERVER, IID_IUnknown, &made))) return nullptr;
  return ThreadState::Current().Take(Ref<IUnknown>::Adopt(static_cast<IUnknown*>(made)).Get());
}

Ref<Object> CreateForScripts(std::string_view progId) {
  if (const PublicClass* found = FindCreatableClass(progId)) return found->create();
  return CreateOfMachine(progId);
}

std::int32_t ShowMessage(std::string_view prompt, std::int32_t style, std::string_view title) {
  return MessageBoxW(nullptr, win32::ToWide(prompt).c_str(), win32::ToWide(title).c_str(),
                     static_cast<UINT>(style) | MB_TASKMODAL);
}

// HEARTHMAKE_SCRIPT_ENGINE is "control" or "own"; anything else leaves the choice to the library, which has
// nobody to complain to.
scriptcontrol::Choice ChosenEngine() {
  wchar_t text[16] = {};
  GetEnvironmentVariableW(L"HEARTHMAKE_SCRIPT_ENGINE", text, static_cast<DWORD>(std::size(text)));
  try {
    return scriptcontrol::ParseChoice(win32::ToUtf8(text));
  } catch (const automation::Error&) {
    return scriptcontrol::Choice::Automatic;
  }
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
  services.showMessage = &ShowMessage;
  ports.scripts = std::make_shared<scriptcontrol::ControlOrElseEngines>(
      ChosenEngine(), ThreadBorder(), std::make_shared<vbs::VbsScriptEngines>(ports, services));
  MakeMissingDatabase(ports.system->ComponentFolder());
  return ports;
}

}  // namespace hearthmake::com
