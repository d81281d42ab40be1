#include "host/system/MachineClasses.hpp"

#include "com/MachineClasses.hpp"
#include "vbscript/objects/StandardObjects.hpp"

namespace hearthmake::host {

// The engine's objects work with the ports of this command: what they start, Ctrl-C ends.
automation::Ref<automation::Object> CreateOfMachine(std::string_view progId) {
  return vbscript::ComesWithEngine(progId) ? nullptr : com::CreateOfMachine(progId);
}

automation::Ref<automation::Object> GetOfMachine(std::string_view path, std::string_view progId) {
  return com::GetOfMachine(path, progId);
}

}  // namespace hearthmake::host
