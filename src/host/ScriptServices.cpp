#include "host/ScriptServices.hpp"

#include "host/CommandScriptHost.hpp"
#include "host/Console.hpp"
#include "host/Interrupt.hpp"
#include "host/MachineClasses.hpp"
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
