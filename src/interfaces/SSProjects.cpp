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
          .method<&SSProjects::Create>("Create")
          .method<&SSProjects::GetLatestFromSoursafe>("GetLatestFromSoursafe")
          .get<&SSProjects::Parent>("Parent")
          .method<&SSProjects::NetSendCheckedOutFiles>("NetSendCheckedOutFiles", {"strMachine", "strMessage"},
                                                       "Not supported")
          .method<&SSProjects::CheckInFile>(
              "CheckInFile", {"strFile", "strComment", "bKeepCheckedOut", "strResult"},
              "This function will check out the file (witout first taking latest version) and then 'check it "
              "in. This function returns TRUE if the file was successfully checked in otherwise false")
          .build();
  return kInterface;
}

}  // namespace hearthmake
