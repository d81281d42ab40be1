#include "deployment/COMApplications.hpp"

#include "automation/Declare.hpp"
#include "build/Build.hpp"

namespace hearthmake {

const automation::Interface& COMApplications::Describe() {
  static const automation::Interface kInterface =
      automation::Declare("COMApplications", "_COMApplications", "{B525D1E4-1128-4BB3-914E-0D072AFC7E20}")
          .byDefault()
          .get<&COMApplications::Item>("item", {"vIndex"})
          .get<&COMApplications::Count>("Count")
          .newEnum<&COMApplications::NewEnum>()
          .method<&COMApplications::Create>("Create")
          .get<&COMApplications::Parent>("Parent")
          .method<&COMApplications::CreateAllPackages>("CreateAllPackages")
          .build();
  return kInterface;
}

}  // namespace hearthmake
