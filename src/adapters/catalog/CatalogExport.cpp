#include "adapters/catalog/CatalogExport.hpp"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "adapters/catalog/CatalogJson.hpp"
#include "automation/Error.hpp"
#include "automation/Text.hpp"

namespace hearthmake::catalog {

namespace {

using nlohmann::ordered_json;

Properties WithoutPassword(const Properties& properties) {
  Properties shown;
  for (const Property& property : properties.All()) {
    if (!property.isSecret) shown.Put(property);
  }
  return shown;
}

std::string KindOf(PackageKind kind, std::int32_t options) {
  return std::string(WordFor(kind)) + ((options & kProxy) != 0 ? " proxy" : "");
}

std::string ExportText(const Package& package, PackageKind kind, std::int32_t options) {
  ordered_json json = {{"format", "hearthmake export"},
                       {"version", 1},
                       {"kind", KindOf(kind, options)},
                       {"key", package.key},
                       {"properties", PropertiesJson(WithoutPassword(package.properties))},
                       {"components", ComponentsJson(package.components)}};
  if ((options & kWithUsers) != 0) json["roles"] = RolesJson(package.roles);
  return PrintJson(json);
}

void Note(std::vector<Export>& exports, std::string_view fileName, std::int32_t options) {
  const auto known = std::find_if(exports.begin(), exports.end(), [&](const Export& item) {
    return automation::EqualsIgnoreCase(item.file, fileName);
  });
  if (known == exports.end()) {
    exports.push_back({std::string(fileName), options});
  } else {
    known->options = options;
  }
}

}  // namespace

void ExportPackageFile(const OpenCatalog& catalog, const std::function<Package&(CatalogData&)>& find,
                       std::string_view fileName, std::int32_t options) {
  catalog.File().Change([&](CatalogData& data) {
    Package& package = find(data);
    platform::FileSystem& files = catalog.Components().Files();
    if ((options & kOverwrite) == 0 && files.FileExists(fileName))
      automation::Raise(automation::RuntimeError::FileAlreadyExists, "Catalog", std::string(fileName));
    files.Replace(fileName, ExportText(package, catalog.Kind(), options));
    Note(package.exports, fileName, options & ~kOverwrite);
  });
}

}  // namespace hearthmake::catalog
