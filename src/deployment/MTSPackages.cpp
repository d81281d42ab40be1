#include "deployment/MTSPackages.hpp"

#include "automation/Error.hpp"
#include "build/Build.hpp"
#include "foundation/KeyedCollection.hpp"

namespace hearthmake {

MTSPackages::MTSPackages(hearthmake::Build& build) : m_build(&build) { SetOwner(&build); }

automation::Variant MTSPackages::Item(const automation::Variant& vIndex) const {
  KeyedCollection<automation::Object>("MTSPackages.item").Item(vIndex);
  return {};
}

automation::Ref<automation::Enumerator> MTSPackages::NewEnum() {
  return automation::Make<CollectionEnumerator<automation::Object>>(
      std::vector<automation::Ref<automation::Object>>());
}

}  // namespace hearthmake
