#pragma once

#include "deployment/COMApplication.hpp"
#include "deployment/PackageDefinitions.hpp"

namespace hearthmake {

// The COM+ applications of a build.
class COMApplications final : public PackageDefinitions {
 public:
  static const automation::Interface& Describe();
  const automation::Interface& Declaration() const override { return Describe(); }

  explicit COMApplications(hearthmake::Build& build) : PackageDefinitions(build, "COMApplications.item") {}

  // By position from 1 (error 9) or by id as text (error 5).
  automation::Ref<COMApplication> Item(const automation::Variant& vIndex) const;
  // A new application with this parent, which is listed once it is saved.
  automation::Ref<COMApplication> Create();

  // Shuts down every application before a run, so that none holds a binary open.
  void ShutDownAll();

 private:
  automation::Ref<PackageDefinition> MakeDefinition() const override {
    return automation::Make<COMApplication>();
  }
};

}  // namespace hearthmake
