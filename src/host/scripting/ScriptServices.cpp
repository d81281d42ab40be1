#include "host/scripting/ScriptServices.hpp"

#include "host/Console.hpp"
#include "host/scripting/CommandScriptHost.hpp"
#include "host/system/Interrupt.hpp"
#include "host/system/MachineClasses.hpp"
#include "interfaces/PublicClasses.hpp"

namespace hearthmake::host {

vbs::Services MakeScriptServices() {
  vbs::Services services;
  services.createObject = [](std::string_view progId) -> automation::Ref<automation::Object> {
    const PublicClass* found = FindCreatableClass(progId);
    return found == nullptr ? CreateOfMachine(progId) : found->create();
  };
  services.getObject = &GetOfMachine;
  services.showMessage = [](std::string_view prompt, std::int32_t style, std::string_view /*title*/) {
    Console(true).Note(Printable(prompt));
    return CommandScriptHost::DefaultAnswer(style);
  };
  services.isStopWanted = &Interrupt::IsRequested;
  return services;
}

}  // namespace hearthmake::host
