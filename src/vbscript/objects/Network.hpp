#pragma once

#include <optional>
#include <string>

#include "automation/Object.hpp"
#include "vbscript/intrinsics/Context.hpp"

namespace hearthmake::vbscript {

// WScript.Network: the names. There are no network drives and printers: those calls are error 445.
class Network final : public automation::Object {
 public:
  // The context outlives the object.
  explicit Network(Context& context) : m_context(context) {}
  const automation::Interface& Declaration() const override;

  std::string ComputerName();
  std::string UserName();
  // %USERDOMAIN%, else the computer's name.
  std::string UserDomain();
  automation::Variant MapNetworkDrive(const std::string& local, const std::string& remote,
                                      std::optional<automation::Variant> update,
                                      std::optional<automation::Variant> user,
                                      std::optional<automation::Variant> password);
  automation::Variant RemoveNetworkDrive(const std::string& name, std::optional<automation::Variant> force,
                                         std::optional<automation::Variant> update);
  automation::Variant EnumNetworkDrives();
  automation::Variant EnumPrinterConnections();

 private:
  platform::SystemInfo& System() { return *m_context.host.Platform().system; }

  Context& m_context;
};

}  // namespace hearthmake::vbscript
