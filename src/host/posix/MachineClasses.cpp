#include "host/system/MachineClasses.hpp"

namespace hearthmake::host {

automation::Ref<automation::Object> CreateOfMachine(std::string_view /*progId*/) { return nullptr; }

automation::Ref<automation::Object> GetOfMachine(std::string_view /*path*/, std::string_view /*progId*/) {
  return nullptr;
}

}  // namespace hearthmake::host
