#pragma once

#include "deployment/PackageDefinition.hpp"

namespace hearthmake {

// The definition of an MTS package. CreatePackage removes the package of that name from the catalog and makes
// it anew, with the components of its projects; with an ExportPath it is exported then.
class MTSPackage final : public PackageDefinition {
 public:
  static const automation::Interface& Describe();
  const automation::Interface& Declaration() const override { return Describe(); }

  MTSPackage();

  // Roles are checked.
  bool Authorization() const { return Record().autentication != 0; }
  void SetAuthorization(bool value);
  // Takes the first package of exactly this name out of the catalog; nothing happens when there is none.
  // Errors are those of the catalog.
  void RemovePackage();

 private:
  void Deploy() override;
};

}  // namespace hearthmake
