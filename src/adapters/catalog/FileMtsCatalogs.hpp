#pragma once

#include <memory>

#include "adapters/catalog/CatalogFile.hpp"
#include "adapters/catalog/ComponentReader.hpp"
#include "platform/MtsCatalog.hpp"

namespace hearthmake::catalog {

// MTS catalogs in a file: what a deployment would make on a machine with MTS, to read and to compare.
//
// Collections: "Packages", and for the key of one "ComponentsInPackage" (one object a class) and
// "RolesInPackage"; error 5 for others. InstallComponent and ExportPackage act at once. An export replaces
// a file of the name, as MTS does. Passwords are not kept, only whether there is one. A class may be in
// several packages. What is protected is described at OpenCatalog. Errors have the source "Catalog", but for
// those of the file system.
class FileMtsCatalogs final : public platform::MtsCatalogs {
 public:
  FileMtsCatalogs(std::shared_ptr<const CatalogFile> file, std::shared_ptr<const ComponentReader> components)
      : m_file(std::move(file)), m_components(std::move(components)) {}

  std::unique_ptr<platform::MtsCatalog> Create() override;

 private:
  std::shared_ptr<const CatalogFile> m_file;
  std::shared_ptr<const ComponentReader> m_components;
};

}  // namespace hearthmake::catalog
