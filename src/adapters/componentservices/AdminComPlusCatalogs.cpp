#include "adapters/componentservices/AdminComPlusCatalogs.hpp"

#include <utility>

#include "adapters/componentservices/AdminCollection.hpp"
#include "adapters/win32/LateObject.hpp"

namespace hearthmake::componentservices {

namespace {

using win32::LateObject;

class Catalog final : public platform::ComPlusCatalog {
 public:
  explicit Catalog(LateObject object) : m_object(std::move(object)) {}

  std::shared_ptr<platform::CatalogCollection> GetCollection(std::string_view strName) override {
    using Collection = AdminCollection<platform::CatalogCollection>;
    return std::make_shared<Collection>(m_object.Object("GetCollection", {strName}));
  }
  void InstallComponent(std::string_view strApplicationName, std::string_view strDllFile,
                        std::string_view strTypelibFile, std::string_view strProxyStubFile) override {
    Explained([&] {
      m_object.Call("InstallComponent", {strApplicationName, strDllFile, strTypelibFile, strProxyStubFile});
    });
  }
  void RefreshComponents() override { m_object.Call("RefreshComponents"); }
  void ExportApplication(std::string_view strApplicationName, std::string_view strFileName,
                         std::int32_t lngOptions) override {
    Explained([&] { m_object.Call("ExportApplication", {strApplicationName, strFileName, lngOptions}); });
  }
  void ShutdownApplication(std::string_view strApplicationName) override {
    m_object.Call("ShutdownApplication", {strApplicationName});
  }

 private:
  void Explained(const std::function<void()>& call) {
    CallExplained(call, [this] { return m_object.Object("GetCollection", {"ErrorInfo"}); });
  }

  LateObject m_object;
};

}  // namespace

std::unique_ptr<platform::ComPlusCatalog> AdminComPlusCatalogs::Create() {
  return std::make_unique<Catalog>(LateObject::Create("COMAdmin.COMAdminCatalog"));
}

}  // namespace hearthmake::componentservices
