#include "build/Builds.hpp"

#include "automation/Declare.hpp"

namespace hearthmake {

const automation::Interface& Builds::Describe() {
  static const automation::Interface kInterface =
      automation::Declare("Builds", "_Builds", "{B912F4B0-6C8E-4879-B78A-F5CDECB7073F}",
                          "{03488770-4EC7-41B9-90DB-FFAF06E1540F}")
          .newEnum<&Builds::NewEnum>()
          .byDefault()
          .get<&Builds::Item>("item", {"vIndex"})
          .get<&Builds::Count>("Count")
          .method<&Builds::LoadAll>("LoadAll")
          .build();
  return kInterface;
}

}  // namespace hearthmake
