#pragma once

#include <string>
#include <vector>

#include "adapters/catalog/CatalogData.hpp"
#include "host/Session.hpp"

namespace hearthmake::host {

// One way in which a catalog differs from what a deployment would make.
struct CatalogDifference {
  std::string package;  // its name
  // "missing" (the package), "unknown" (it can't be said, found tells why), "property", "component missing",
  // "component extra", "classes"
  std::string kind;
  std::string what;      // a property or a binary
  std::string expected;  // as text
  std::string found;
};

// What a deployment of the build's packages would make of an empty catalog: it is done there, in memory.
// Nothing is exported, and events and scripts of the build don't come. A package that could not be made has
// the reason in its place of failures.
struct ExpectedCatalog {
  struct Failure {
    std::string package;
    std::string reason;
  };
  std::vector<catalog::Package> packages;
  std::vector<Failure> failures;
};
ExpectedCatalog Expect(Build& build, catalog::PackageKind kind);

// Properties that a deployment does not set are not compared, and packages of others are not looked at. Of a
// password it is known only whether there is one.
std::vector<CatalogDifference> Compare(const ExpectedCatalog& expected,
                                       const std::vector<catalog::Package>& installed);

// The value as people read it; of a password "(set)" or nothing.
std::string CatalogValueText(const catalog::Property& property);

}  // namespace hearthmake::host
