#include "adapters/catalog/CatalogFile.hpp"

#include "adapters/catalog/CatalogJson.hpp"
#include "automation/Error.hpp"

namespace hearthmake::catalog {

CatalogData CatalogFile::Read() const { return ParseCatalog(m_file->Read(), m_file->Path()); }

void CatalogFile::Change(const std::function<void(CatalogData&)>& change) const {
  const auto lock = m_file->Lock();
  const std::string before = m_file->Read();
  CatalogData data = ParseCatalog(before, m_file->Path());
  change(data);
  const std::string after = PrintCatalog(data);
  if (after == before) return;
  if (after.size() > static_cast<std::size_t>(kLargest)) {
    automation::Raise(automation::kInvalidValue, "Catalog",
                      m_file->Path() + ": there is no room for more; remove what is not needed any more.");
  }
  m_file->Replace(after);
}

}  // namespace hearthmake::catalog
