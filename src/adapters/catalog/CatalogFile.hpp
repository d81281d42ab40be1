#pragma once

#include <functional>
#include <memory>

#include "adapters/catalog/CatalogData.hpp"
#include "platform/SharedFile.hpp"

namespace hearthmake::catalog {

// The file in which a machine's catalogs stand, shared by any number of processes. A missing file is an
// empty catalog. Errors: 45, source "Catalog", with path and line, for a file that is damaged or none of
// ours, which is left as it is; and those of the file system.
class CatalogFile {
 public:
  static constexpr std::int64_t kLargest = std::int64_t{16} << 20;  // bytes; for whoever opens the file

  explicit CatalogFile(std::shared_ptr<platform::SharedFile> file) : m_file(std::move(file)) {}

  CatalogData Read() const;
  // Reads, changes and writes as one step, while no other process can. When the change raises an error, or
  // changes nothing, the file is not touched.
  void Change(const std::function<void(CatalogData&)>& change) const;

 private:
  std::shared_ptr<platform::SharedFile> m_file;
};

}  // namespace hearthmake::catalog
