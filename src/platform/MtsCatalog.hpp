#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "platform/CatalogCollection.hpp"

namespace hearthmake::platform {

// The utility object of a collection. A component collection's installs components, that of the packages
// exports packages; what the collection's own doesn't have is error 438.
class MtsUtil {
 public:
  MtsUtil() = default;
  MtsUtil(const MtsUtil&) = delete;
  MtsUtil& operator=(const MtsUtil&) = delete;
  virtual ~MtsUtil() = default;

  // Registers all classes of a server binary in the package. DOS paths; the last may be empty.
  virtual void InstallComponent(std::string_view strDllFile, std::string_view strTypelibFile,
                                std::string_view strProxyStubFile) = 0;
  // Writes the package file.
  virtual void ExportPackage(std::string_view strPackageKey, std::string_view strFileName,
                             std::int32_t lngOptions) = 0;
};

class MtsCollection : public CatalogCollection {
 public:
  // "ComponentsInPackage" with the key of a package.
  virtual std::shared_ptr<MtsCollection> GetCollection(std::string_view strName, std::string_view strKey) = 0;
  virtual std::shared_ptr<MtsUtil> GetUtilInterface() = 0;
};

// An open catalog of MTS packages.
class MtsCatalog {
 public:
  MtsCatalog() = default;
  MtsCatalog(const MtsCatalog&) = delete;
  MtsCatalog& operator=(const MtsCatalog&) = delete;
  virtual ~MtsCatalog() = default;

  // "Packages".
  virtual std::shared_ptr<MtsCollection> GetCollection(std::string_view strName) = 0;
};

class MtsCatalogs {
 public:
  MtsCatalogs() = default;
  MtsCatalogs(const MtsCatalogs&) = delete;
  MtsCatalogs& operator=(const MtsCatalogs&) = delete;
  virtual ~MtsCatalogs() = default;

  // Opens the catalog of this machine.
  virtual std::unique_ptr<MtsCatalog> Create() = 0;
};

}  // namespace hearthmake::platform
