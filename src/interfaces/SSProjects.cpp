#include "sourcecontrol/SSProjects.hpp"

#include "automation/Declare.hpp"
#include "build/Build.hpp"

namespace hearthmake {

const automation::Interface& SSProjects::Describe() {
  static const automation::Interface kInterface =
      automation::Declare("SSProjects", "_SSProjects", "{1875DCF4-BA52-43F4-B5E1-726CC5DA8C09}")
          .byDefault()
          .get<&SSProjects::Item>("item", {"vIndex"})
          .get<&SSProjects::Count>("Count")
          .newEnum<&SSProjects::NewEnum>()
          .get<&SSProjects::Parent>("Parent")
          .build();
  return kInterface;
}

}  // namespace hearthmake
