#pragma once

#include "deployment/MTSPackage.hpp"
#include "deployment/PackageDefinitions.hpp"

namespace hearthmake {

// The MTS packages of a build.
class MTSPackages final : public PackageDefinitions {
 public:
  static const automation::Interface& Describe();
  const automation::Interface& Declaration() const override { return Describe(); }

  explicit MTSPackages(hearthmake::Build& build) : PackageDefinitions(build, "MTSPackages.item") {}

  // By position from 1 (error 9) or by id as text (error 5).
  automation::Ref<MTSPackage> Item(const automation::Variant& vIndex) const;
  // A new package with this parent, which is listed once it is saved.
  automation::Ref<MTSPackage> Create();

 private:
  automation::Ref<PackageDefinition> MakeDefinition() const override {
    return automation::Make<MTSPackage>();
  }
};

}  // namespace hearthmake
