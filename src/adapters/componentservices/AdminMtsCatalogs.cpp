#include "adapters/componentservices/AdminMtsCatalogs.hpp"

#include <utility>

#include "adapters/componentservices/AdminCollection.hpp"
#include "adapters/win32/LateObject.hpp"

namespace hearthmake::componentservices {

namespace {

using win32::LateObject;

class Util final : public platform::MtsUtil {
 public:
  // With the collection that it comes from, which tells of its errors.
  Util(LateObject object, LateObject collection)
      : m_object(std::move(object)), m_collection(std::move(collection)) {}

  void InstallComponent(std::string_view strDllFile, std::string_view strTypelibFile,
                        std::string_view strProxyStubFile) override {
    Explained([&] { m_object.Call("InstallComponent", {strDllFile, strTypelibFile, strProxyStubFile}); });
  }
  void ExportPackage(std::string_view strPackageKey, std::string_view strFileName,
                     std::int32_t lngOptions) override {
    Explained([&] { m_object.Call("ExportPackage", {strPackageKey, strFileName, lngOptions}); });
  }

 private:
  void Explained(const std::function<void()>& call) {
    CallExplained(call, [this] { return m_collection.Object("GetCollection", {"ErrorInfo", ""}); });
  }

  LateObject m_object;
  LateObject m_collection;
};

class Collection final : public AdminCollection<platform::MtsCollection> {
 public:
  using AdminCollection::AdminCollection;

  std::shared_ptr<platform::MtsCollection> GetCollection(std::string_view strName,
                                                         std::string_view strKey) override {
    return std::make_shared<Collection>(
        AdminCollection::Collection().Object("GetCollection", {strName, strKey}));
  }
  std::shared_ptr<platform::MtsUtil> GetUtilInterface() override {
    const LateObject& own = AdminCollection::Collection();
    return std::make_shared<Util>(own.Object("GetUtilInterface"), own);
  }
};

class Catalog final : public platform::MtsCatalog {
 public:
  explicit Catalog(LateObject object) : m_object(std::move(object)) {}

  std::shared_ptr<platform::MtsCollection> GetCollection(std::string_view strName) override {
    return std::make_shared<Collection>(m_object.Object("GetCollection", {strName}));
  }

 private:
  LateObject m_object;
};

}  // namespace

std::unique_ptr<platform::MtsCatalog> AdminMtsCatalogs::Create() {
  return std::make_unique<Catalog>(LateObject::Create("MTSAdmin.Catalog.1"));
}

}  // namespace hearthmake::componentservices
