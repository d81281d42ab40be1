#include "vbscript/objects/Network.hpp"

#include "automation/Declare.hpp"
#include "vbscript/Errors.hpp"
#include "vbscript/objects/StandardObjects.hpp"

namespace hearthmake::vbscript {

using automation::Variant;

const automation::Interface& Network::Declaration() const {
  static const automation::Interface kDeclaration =
      automation::Declare("IWshNetwork2", "IWshNetwork2", "", "")
          .get<&Network::UserDomain>("UserDomain")
          .get<&Network::UserName>("UserName")
          .get<&Network::ComputerName>("ComputerName")
          .method<&Network::MapNetworkDrive>(
              "MapNetworkDrive", {"LocalName", "RemoteName", "UpdateProfile", "UserName", "Password"})
          .method<&Network::RemoveNetworkDrive>("RemoveNetworkDrive", {"Name", "Force", "UpdateProfile"})
          .method<&Network::EnumNetworkDrives>("EnumNetworkDrives")
          .method<&Network::EnumPrinterConnections>("EnumPrinterConnections")
          .build();
  return kDeclaration;
}

std::string Network::ComputerName() { return System().ComputerName(); }

std::string Network::UserName() { return System().UserName(); }

std::string Network::UserDomain() {
  return System().EnvironmentVariable("USERDOMAIN").value_or(System().ComputerName());
}

Variant Network::MapNetworkDrive(const std::string&, const std::string&, std::optional<Variant>,
                                 std::optional<Variant>, std::optional<Variant>) {
  RaiseRuntime(number::kActionNotSupported);
}

Variant Network::RemoveNetworkDrive(const std::string&, std::optional<Variant>, std::optional<Variant>) {
  RaiseRuntime(number::kActionNotSupported);
}

Variant Network::EnumNetworkDrives() { RaiseRuntime(number::kActionNotSupported); }

Variant Network::EnumPrinterConnections() { RaiseRuntime(number::kActionNotSupported); }

automation::Ref<automation::Object> CreateNetwork(Context& context) {
  if (!context.host.Platform().system) return nullptr;
  return automation::Make<Network>(context);
}

}  // namespace hearthmake::vbscript
