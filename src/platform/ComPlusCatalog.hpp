#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "platform/CatalogCollection.hpp"

namespace hearthmake::platform {

// An open catalog of COM+ applications.
class ComPlusCatalog {
 public:
  ComPlusCatalog() = default;
  ComPlusCatalog(const ComPlusCatalog&) = delete;
  ComPlusCatalog& operator=(const ComPlusCatalog&) = delete;
  virtual ~ComPlusCatalog() = default;

  // "Applications".
  virtual std::shared_ptr<CatalogCollection> GetCollection(std::string_view strName) = 0;
  // Registers all classes of a server binary in the application. DOS paths; the last two may be empty.
  virtual void InstallComponent(std::string_view strApplicationName, std::string_view strDllFile,
                                std::string_view strTypelibFile, std::string_view strProxyStubFile) = 0;
  // Reads the registration of the installed components again.
  virtual void RefreshComponents() = 0;
  // Writes the application file. Option 4 replaces a file that is there.
  virtual void ExportApplication(std::string_view strApplicationName, std::string_view strFileName,
                                 std::int32_t lngOptions) = 0;
  // Stops the application's process; an error when it isn't installed.
  virtual void ShutdownApplication(std::string_view strApplicationName) = 0;
};

class ComPlusCatalogs {
 public:
  ComPlusCatalogs() = default;
  ComPlusCatalogs(const ComPlusCatalogs&) = delete;
  ComPlusCatalogs& operator=(const ComPlusCatalogs&) = delete;
  virtual ~ComPlusCatalogs() = default;

  // Opens the catalog of this machine.
  virtual std::unique_ptr<ComPlusCatalog> Create() = 0;
};

}  // namespace hearthmake::platform
