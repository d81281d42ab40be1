#include "adapters/catalog/FileMtsCatalogs.hpp"

#include <string>

#include "adapters/catalog/CatalogExport.hpp"
#include "adapters/catalog/ClassList.hpp"
#include "adapters/catalog/FileCollection.hpp"
#include "adapters/catalog/PackageList.hpp"
#include "adapters/catalog/RoleList.hpp"
#include "automation/Error.hpp"
#include "automation/Text.hpp"

namespace hearthmake::catalog {

namespace {

using automation::RuntimeError;
using platform::MtsCollection;
using platform::MtsUtil;

[[noreturn]] void RaiseNoMember(const char* member) {
  automation::Raise(RuntimeError::MemberNotFound, "Catalog", member);
}

[[noreturn]] void RaiseNoCollection(std::string_view name) {
  automation::Raise(RuntimeError::InvalidProcedureCall, "Catalog",
                    "there is no collection '" + std::string(name) + "'");
}

bool Is(std::string_view name, const char* collection) {
  return automation::EqualsIgnoreCaseAscii(name, collection);
}

class PackageUtil final : public MtsUtil {
 public:
  explicit PackageUtil(std::shared_ptr<OpenCatalog> catalog) : m_catalog(std::move(catalog)) {}

  void InstallComponent(std::string_view /*strDllFile*/, std::string_view /*strTypelibFile*/,
                        std::string_view /*strProxyStubFile*/) override {
    RaiseNoMember("InstallComponent");
  }
  void ExportPackage(std::string_view strPackageKey, std::string_view strFileName,
                     std::int32_t lngOptions) override {
    // MTS has no option to overwrite: it does.
    ExportPackageFile(
        *m_catalog, [&](CatalogData& data) -> Package& { return m_catalog->Require(data, strPackageKey); },
        strFileName, (lngOptions & kWithUsers) | kOverwrite);
  }

 private:
  std::shared_ptr<OpenCatalog> m_catalog;
};

class ComponentUtil final : public MtsUtil {
 public:
  ComponentUtil(std::shared_ptr<OpenCatalog> catalog, std::string packageKey)
      : m_catalog(std::move(catalog)), m_packageKey(std::move(packageKey)) {}

  void InstallComponent(std::string_view strDllFile, std::string_view strTypelibFile,
                        std::string_view strProxyStubFile) override {
    m_catalog->Install([&](CatalogData& data) -> Package& { return m_catalog->Require(data, m_packageKey); },
                       strDllFile, strTypelibFile, strProxyStubFile);
  }
  void ExportPackage(std::string_view /*strPackageKey*/, std::string_view /*strFileName*/,
                     std::int32_t /*lngOptions*/) override {
    RaiseNoMember("ExportPackage");
  }

 private:
  std::shared_ptr<OpenCatalog> m_catalog;
  std::string m_packageKey;
};

// What stands in a package.
class InnerCollection final : public FileCollection<MtsCollection> {
 public:
  InnerCollection(const std::shared_ptr<OpenCatalog>& catalog, std::unique_ptr<const EntryList> list,
                  std::shared_ptr<MtsUtil> util)
      : FileCollection(catalog, std::move(list)), m_util(std::move(util)) {}

  std::shared_ptr<MtsCollection> GetCollection(std::string_view strName,
                                               std::string_view /*strKey*/) override {
    RaiseNoCollection(strName);
  }
  std::shared_ptr<MtsUtil> GetUtilInterface() override {
    if (!m_util) RaiseNoMember("GetUtilInterface");
    return m_util;
  }

 private:
  std::shared_ptr<MtsUtil> m_util;
};

class PackageCollection final : public FileCollection<MtsCollection> {
 public:
  explicit PackageCollection(std::shared_ptr<OpenCatalog> catalog)
      : FileCollection(catalog, std::make_unique<PackageList>(catalog)), m_catalog(std::move(catalog)) {}

  std::shared_ptr<MtsCollection> GetCollection(std::string_view strName, std::string_view strKey) override {
    CatalogData data = m_catalog->File().Read();
    const std::string key = m_catalog->Require(data, strKey).key;
    if (Is(strName, "ComponentsInPackage"))
      return std::make_shared<InnerCollection>(m_catalog, std::make_unique<ClassList>(m_catalog, key),
                                               std::make_shared<ComponentUtil>(m_catalog, key));
    if (Is(strName, "RolesInPackage"))
      return std::make_shared<InnerCollection>(m_catalog, std::make_unique<RoleList>(m_catalog, key),
                                               nullptr);
    RaiseNoCollection(strName);
  }
  std::shared_ptr<MtsUtil> GetUtilInterface() override { return std::make_shared<PackageUtil>(m_catalog); }

 private:
  std::shared_ptr<OpenCatalog> m_catalog;
};

class FileMtsCatalog final : public platform::MtsCatalog {
 public:
  explicit FileMtsCatalog(std::shared_ptr<OpenCatalog> catalog) : m_catalog(std::move(catalog)) {}

  std::shared_ptr<MtsCollection> GetCollection(std::string_view strName) override {
    if (!Is(strName, "Packages")) RaiseNoCollection(strName);
    return std::make_shared<PackageCollection>(m_catalog);
  }

 private:
  std::shared_ptr<OpenCatalog> m_catalog;
};

}  // namespace

std::unique_ptr<platform::MtsCatalog> FileMtsCatalogs::Create() {
  return std::make_unique<FileMtsCatalog>(
      std::make_shared<OpenCatalog>(PackageKind::Mts, m_file, m_components));
}

}  // namespace hearthmake::catalog
