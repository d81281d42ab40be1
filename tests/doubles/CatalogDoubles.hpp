#pragma once

#include <memory>
#include <utility>

#include "doubles/DispatchDouble.hpp"
#include "platform/ComPlusCatalog.hpp"
#include "platform/MtsCatalog.hpp"

namespace hearthmake::doubles {

// The administration objects of MTS and COM+ as they look to automation, with a catalog of the ports behind
// them. Their names and parameters are those of the real ones.

class CatalogObjectDouble final : public DispatchDouble {
 public:
  CatalogObjectDouble(std::shared_ptr<CallLog> log, std::shared_ptr<platform::CatalogObject> object)
      : DispatchDouble("CatalogObject", std::move(log)), m_object(std::move(object)) {
    Get("Name", [this] { return automation::Variant::FromText(m_object->Name()); });
    Get("Key", [this] { return automation::Variant::FromText(m_object->Key()); });
    Get("Value", 1, [this](CallArguments a) { return m_object->Value(automation::ToText(a[0])); });
    Let("Value", 2, [this](CallArguments a) {
      m_object->SetValue(automation::ToText(a[0]), a[1]);
      return Answer();
    });
  }

 private:
  std::shared_ptr<platform::CatalogObject> m_object;
};

class MtsUtilDouble final : public DispatchDouble {
 public:
  MtsUtilDouble(std::shared_ptr<CallLog> log, std::shared_ptr<platform::MtsUtil> util)
      : DispatchDouble("Util", std::move(log)), m_util(std::move(util)) {
    Method("InstallComponent", 3, [this](CallArguments a) {
      m_util->InstallComponent(automation::ToText(a[0]), automation::ToText(a[1]), automation::ToText(a[2]));
      return Answer();
    });
    Method("ExportPackage", 3, [this](CallArguments a) {
      m_util->ExportPackage(automation::ToText(a[0]), automation::ToText(a[1]), automation::ToLong(a[2]));
      return Answer();
    });
  }

 private:
  std::shared_ptr<platform::MtsUtil> m_util;
};

// Collection is the port's class.
template <class Collection>
class CatalogCollectionDouble : public DispatchDouble {
 public:
  CatalogCollectionDouble(std::shared_ptr<CallLog> log, std::shared_ptr<Collection> collection)
      : DispatchDouble("CatalogCollection", std::move(log)), m_collection(std::move(collection)) {
    Method("Populate", 0, [this](CallArguments) {
      m_collection->Populate();
      return Answer();
    });
    Get("Count", [this] { return automation::Variant::FromLong(m_collection->Count()); });
    Get("Item", 1, [this](CallArguments a) { return Object(m_collection->Item(automation::ToLong(a[0]))); });
    Method("Add", 0, [this](CallArguments) { return Object(m_collection->Add()); });
    Method("Remove", 1, [this](CallArguments a) {
      m_collection->Remove(automation::ToLong(a[0]));
      return Answer();
    });
    Method("SaveChanges", 0, [this](CallArguments) {
      m_collection->SaveChanges();
      return automation::Variant::FromLong(1);  // how many were written
    });
    if constexpr (std::is_same_v<Collection, platform::MtsCollection>) {
      Method("GetCollection", 2, [this](CallArguments a) {
        return MakeDouble<CatalogCollectionDouble>(
            Log(), m_collection->GetCollection(automation::ToText(a[0]), automation::ToText(a[1])));
      });
      Method("GetUtilInterface", 0, [this](CallArguments) {
        return MakeDouble<MtsUtilDouble>(Log(), m_collection->GetUtilInterface());
      });
    }
  }

 private:
  Answer Object(std::shared_ptr<platform::CatalogObject> object) {
    return MakeDouble<CatalogObjectDouble>(Log(), std::move(object));
  }

  std::shared_ptr<Collection> m_collection;
};

// MTSAdmin.Catalog.1
class MtsCatalogDouble final : public DispatchDouble {
 public:
  MtsCatalogDouble(std::shared_ptr<CallLog> log, std::unique_ptr<platform::MtsCatalog> catalog)
      : DispatchDouble("Catalog", std::move(log)), m_catalog(std::move(catalog)) {
    Method("GetCollection", 1, [this](CallArguments a) {
      return MakeDouble<CatalogCollectionDouble<platform::MtsCollection>>(
          Log(), m_catalog->GetCollection(automation::ToText(a[0])));
    });
  }

 private:
  std::unique_ptr<platform::MtsCatalog> m_catalog;
};

// COMAdmin.COMAdminCatalog
class ComPlusCatalogDouble final : public DispatchDouble {
 public:
  ComPlusCatalogDouble(std::shared_ptr<CallLog> log, std::unique_ptr<platform::ComPlusCatalog> catalog)
      : DispatchDouble("COMAdminCatalog", std::move(log)), m_catalog(std::move(catalog)) {
    using automation::ToText;
    Method("GetCollection", 1, [this](CallArguments a) {
      return MakeDouble<CatalogCollectionDouble<platform::CatalogCollection>>(
          Log(), m_catalog->GetCollection(ToText(a[0])));
    });
    Method("InstallComponent", 4, [this](CallArguments a) {
      m_catalog->InstallComponent(ToText(a[0]), ToText(a[1]), ToText(a[2]), ToText(a[3]));
      return Answer();
    });
    Method("RefreshComponents", 0, [this](CallArguments) {
      m_catalog->RefreshComponents();
      return Answer();
    });
    Method("ExportApplication", 3, [this](CallArguments a) {
      m_catalog->ExportApplication(ToText(a[0]), ToText(a[1]), automation::ToLong(a[2]));
      return Answer();
    });
    Method("ShutdownApplication", 1, [this](CallArguments a) {
      m_catalog->ShutdownApplication(ToText(a[0]));
      return Answer();
    });
  }

 private:
  std::unique_ptr<platform::ComPlusCatalog> m_catalog;
};

}  // namespace hearthmake::doubles
