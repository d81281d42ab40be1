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

}  // namespace hearthmake
