#include "deployment/MTSPackages.hpp"

namespace hearthmake {

automation::Ref<MTSPackage> MTSPackages::Item(const automation::Variant& vIndex) const {
  return automation::Ref<MTSPackage>(&static_cast<MTSPackage&>(Find(vIndex)));
}

automation::Ref<MTSPackage> MTSPackages::Create() {
  return automation::Ref<MTSPackage>(&static_cast<MTSPackage&>(*CreateDefinition()));
}

}  // namespace hearthmake
