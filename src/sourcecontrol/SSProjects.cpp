#include "sourcecontrol/SSProjects.hpp"

#include "automation/Error.hpp"
#include "build/Build.hpp"
#include "foundation/KeyedCollection.hpp"

namespace hearthmake {

SSProjects::SSProjects(hearthmake::Build& build) : m_build(&build) { SetOwner(&build); }

automation::Variant SSProjects::Item(const automation::Variant& vIndex) const {
  KeyedCollection<automation::Object>("SSProjects.item").Item(vIndex);
  return {};
}

automation::Ref<automation::Enumerator> SSProjects::NewEnum() {
  return automation::Make<CollectionEnumerator<automation::Object>>(
      std::vector<automation::Ref<automation::Object>>());
}

bool SSProjects::CheckInFile(const std::string& /*strFile*/, const std::string& /*strComment*/,
                             bool /*bKeepCheckedOut*/, std::string& strResult) const {
  strResult = "No matching SourceSafe project found";
  return false;
}

std::string SSProjects::GetLastModifiedData(const std::string& /*file*/) const {
  automation::Raise(automation::kInvalidValue, "SSProjects.GetLastModifiedData",
                    "You have no SourceSafe projects configured!");
}

}  // namespace hearthmake
