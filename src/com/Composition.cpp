#include "com/Composition.hpp"

#include <string>

#include "adapters/sqlite/BuildSchema.hpp"
#include "adapters/sqlite/FileFormat.hpp"
#include "adapters/win32/MessagePump.hpp"
#include "adapters/win32/Win32ProcessLauncher.hpp"
#include "automation/Error.hpp"
#include "com/MachineClasses.hpp"
#include "com/MachinePorts.hpp"
#include "com/MessageBox.hpp"
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
  platform::Platform ports = MachinePorts();
  ports.processes = std::make_shared<win32::Win32ProcessLauncher>();
  ports.events = std::make_shared<win32::MessagePump>();
  vbs::Services services;
  services.createObject = &CreateForScripts;
  services.getObject = &GetOfMachine;
  services.showMessage = &ShowMessage;
  ports.scripts = MachineScripts(ports, services);
  MakeMissingDatabase(ports.system->ComponentFolder());
  return ports;
}

}  // namespace hearthmake::com
