#include "deployment/COMApplications.hpp"

#include "automation/Error.hpp"
#include "build/Build.hpp"
#include "foundation/KeyedCollection.hpp"

namespace hearthmake {

COMApplications::COMApplications(hearthmake::Build& build) : m_build(&build) { SetOwner(&build); }

automation::Variant COMApplications::Item(const automation::Variant& vIndex) const {
  KeyedCollection<automation::Object>("COMApplications.item").Item(vIndex);
  return {};
}

automation::Ref<automation::Enumerator> COMApplications::NewEnum() {
  return automation::Make<CollectionEnumerator<automation::Object>>(
      std::vector<automation::Ref<automation::Object>>());
}

void COMApplications::ShutDownAll() {
  bool cancel = false;
  m_build->RaiseMTSEvent("Shutting down COM+ Applications", cancel);
}

}  // namespace hearthmake
