#include "project/References.hpp"

#include "automation/Declare.hpp"
#include "project/Project.hpp"

namespace hearthmake {

const automation::Interface& References::Describe() {
  static const automation::Interface kInterface =
      automation::Declare("References", "_References", "{A240AA68-B166-4AD5-9D91-EDCBAE6A049F}")
          .newEnum<&References::NewEnum>()
          .method<&References::AddInternalReference>("AddInternalReference", {"objProject"})
          .method<&References::AddExternalReference>("AddExternalReference",
                                                     {"strReferenceString", "strFileName"})
          .method<&References::Remove>("Remove", {"index"})
          .get<&References::Count>("Count")
          .byDefault()
          .get<&References::Item>("item", {"vIndex"})
          .method<&References::IsProjectReferencingExternal>("IsProjectReferencingExternal", {"GUID"})
          .method<&References::IsProjectReferencing>("IsProjectReferencing", {"idProject"})
          .method<&References::ValidateReference>("ValidateReference", {"strPath"})
          .build();
  return kInterface;
}

}  // namespace hearthmake
