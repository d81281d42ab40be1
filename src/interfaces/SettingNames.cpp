#include "automation/Declare.hpp"
#include "foundation/mTypes.hpp"

namespace hearthmake {

const automation::Interface& SettingNames::Describe() {
  static const automation::Interface kInterface =
      automation::Declare("Properties", "_Properties", "{EA4494FD-4D12-408B-B06B-F1E2696C336F}")
          .newEnum<&SettingNames::NewEnum>()
          .get<&SettingNames::Count>("Count")
          .byDefault()
          .get<&SettingNames::Item>("item", {"vIndex"})
          .build();
  return kInterface;
}

}  // namespace hearthmake
