#include "adapters/catalog/FileComPlusCatalogs.hpp"

#include <string>

#include "adapters/catalog/CatalogExport.hpp"
#include "adapters/catalog/FileCollection.hpp"
#include "adapters/catalog/PackageList.hpp"
#include "automation/Error.hpp"
#include "automation/Text.hpp"

namespace hearthmake::catalog {

namespace {

using platform::CatalogCollection;

class FileComPlusCatalog final : public platform::ComPlusCatalog {
 public:
  explicit FileComPlusCatalog(std::shared_ptr<OpenCatalog> catalog) : m_catalog(std::move(catalog)) {}

  std::shared_ptr<CatalogCollection> GetCollection(std::string_view strName) override {
    if (!automation::EqualsIgnoreCaseAscii(strName, "Applications"))
      automation::Raise(automation::RuntimeError::InvalidProcedureCall, "Catalog",
                        "there is no collection '" + std::string(strName) + "'");
    return std::make_shared<FileCollection<CatalogCollection>>(m_catalog,
                                                               std::make_unique<PackageList>(m_catalog));
  }
  void InstallComponent(std::string_view strApplicationName, std::string_view strDllFile,
                        std::string_view strTypelibFile, std::string_view strProxyStubFile) override {
    m_catalog->Install(Named(strApplicationName), strDllFile, strTypelibFile, strProxyStubFile);
  }
  void RefreshComponents() override { m_catalog->Refresh(); }
  void ExportApplication(std::string_view strApplicationName, std::string_view strFileName,
                         std::int32_t lngOptions) override {
    ExportPackageFile(*m_catalog, Named(strApplicationName), strFileName, lngOptions);
  }
  void ShutdownApplication(std::string_view strApplicationName) override {
    CatalogData data = m_catalog->File().Read();
    m_catalog->RequireByName(data, strApplicationName);
  }

 private:
  std::function<Package&(CatalogData&)> Named(std::string_view name) const {
    return [this, name = std::string(name)](CatalogData& data) -> Package& {
      return m_catalog->RequireByName(data, name);
    };
  }

  std::shared_ptr<OpenCatalog> m_catalog;
};

}  // namespace

std::unique_ptr<platform::ComPlusCatalog> FileComPlusCatalogs::Create() {
  return std::make_unique<FileComPlusCatalog>(
      std::make_shared<OpenCatalog>(PackageKind::ComPlus, m_file, m_components));
}

}  // namespace hearthmake::catalog
