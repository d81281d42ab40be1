#pragma once

#include <cstdint>
#include <functional>
#include <string_view>

#include "adapters/catalog/OpenCatalog.hpp"

namespace hearthmake::catalog {

// The options of COM+ exports.
enum ExportOptions : std::int32_t {
  kWithUsers = 1,  // the roles
  kProxy = 2,      // for the machines of the clients
  kOverwrite = 4,
};

// Writes what the package holds, without its password, as JSON to a file (a DOS path), whole or not at all,
// and notes it in the catalog. Error 58 with the path when there is such a file and it may not be
// overwritten; error 76 when its folder is missing.
void ExportPackageFile(const OpenCatalog& catalog, const std::function<Package&(CatalogData&)>& find,
                       std::string_view fileName, std::int32_t options);

}  // namespace hearthmake::catalog
