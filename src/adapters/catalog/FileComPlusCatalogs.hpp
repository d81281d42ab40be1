#pragma once

#include <memory>

#include "adapters/catalog/CatalogFile.hpp"
#include "adapters/catalog/ComponentReader.hpp"
#include "platform/ComPlusCatalog.hpp"

namespace hearthmake::catalog {

// COM+ catalogs in a file: what a deployment would make on a machine with COM+, to read and to compare.
//
// The one collection is "Applications"; error 5 for others. An application is named by its name or key, the
// first of a name counts; error 45 when it isn't installed. InstallComponent, RefreshComponents and
// ExportApplication act at once. Nothing runs in it, so that there is nothing to shut down. Passwords are
// not kept, only whether there is one. A class may be in several applications. What is protected is
// described at OpenCatalog. Errors have the source "Catalog", but for those of the file system.
class FileComPlusCatalogs final : public platform::ComPlusCatalogs {
 public:
  FileComPlusCatalogs(std::shared_ptr<const CatalogFile> file,
                      std::shared_ptr<const ComponentReader> components)
      : m_file(std::move(file)), m_components(std::move(components)) {}

  std::unique_ptr<platform::ComPlusCatalog> Create() override;

 private:
  std::shared_ptr<const CatalogFile> m_file;
  std::shared_ptr<const ComponentReader> m_components;
};

}  // namespace hearthmake::catalog
