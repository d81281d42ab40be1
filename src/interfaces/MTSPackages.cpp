#include "deployment/MTSPackages.hpp"

#include "automation/Declare.hpp"
#include "build/Build.hpp"

namespace hearthmake {

const automation::Interface& MTSPackages::Describe() {
  static const automation::Interface kInterface =
      automation::Declare("MTSPackages", "_MTSPackages", "{9E66BEA4-1C48-4EAC-A324-F171E516359F}")
          .byDefault()
          .get<&MTSPackages::Item>("item", {"vIndex"})
          .get<&MTSPackages::Count>("Count")
          .newEnum<&MTSPackages::NewEnum>()
          .method<&MTSPackages::Create>("Create")
          .get<&MTSPackages::Parent>("Parent")
          .method<&MTSPackages::CreateAllPackages>("CreateAllPackages")
          .build();
  return kInterface;
}

}  // namespace hearthmake
