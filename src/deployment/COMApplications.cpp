#include "deployment/COMApplications.hpp"

#include "build/Build.hpp"

namespace hearthmake {

automation::Ref<COMApplication> COMApplications::Item(const automation::Variant& vIndex) const {
  return automation::Ref<COMApplication>(&static_cast<COMApplication&>(Find(vIndex)));
}

automation::Ref<COMApplication> COMApplications::Create() {
  return automation::Ref<COMApplication>(&static_cast<COMApplication&>(*CreateDefinition()));
}

void COMApplications::ShutDownAll() {
  const automation::Ref<COMApplications> self(this);  // an event handler may drop the build
  bool cancel = false;
  ParentBuild().RaiseMTSEvent("Shutting down COM+ Applications", cancel);
  for (const auto& application : All()) static_cast<COMApplication&>(*application).ShoutDown();
}

}  // namespace hearthmake
