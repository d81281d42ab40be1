#pragma once

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "automation/Error.hpp"
#include "platform/ComPlusCatalog.hpp"
#include "platform/EventPump.hpp"
#include "platform/MtsCatalog.hpp"

namespace hearthmake::support {

// What was asked of a catalog and told to a host, a line a step, in order. One of the catalog's calls may be
// made to fail.
class StepLog {
 public:
  // A step that always succeeds.
  void Note(std::string step) { steps.push_back(std::move(step)); }
  // A call of the catalog: the one that is to fail raises instead.
  void Call(std::string call) {
    Note(std::move(call));
    if (++calls == failAt) automation::Raise(-1, "Catalog", "call " + std::to_string(calls) + " failed");
  }
  void Clear() {
    steps.clear();
    calls = 0;
    failAt = 0;
  }

  std::vector<std::string> steps;
  int calls = 0;
  int failAt = 0;  // counted from 1; 0 for none
};

// A value as the log shows it: texts in quotes, so that 1 is another value than "1".
inline std::string Shown(const automation::Variant& value) {
  const std::string text = automation::ToText(value);
  return value.Type() == automation::VariantType::String ? '"' + text + '"' : text;
}

// One object of a catalog as it is stored.
struct CatalogEntry {
  std::string Get(const std::string& name) const {
    for (const auto& [known, value] : values) {
      if (known == name) return Shown(value);
    }
    return {};
  }
  std::string Name() const {
    const std::string shown = Get("Name");
    return shown.size() < 2 ? std::string() : shown.substr(1, shown.size() - 2);
  }
  // Values and components, without the key.
  std::string Text() const {
    std::string text;
    for (const auto& [name, value] : values) text += name + " = " + Shown(value) + '\n';
    for (const std::string& file : components) text += file + '\n';
    return text;
  }

  std::string key;
  std::vector<std::pair<std::string, automation::Variant>> values;  // in the order in which they came
  std::vector<std::string> components;                              // files
};
using CatalogEntries = std::vector<CatalogEntry>;

inline CatalogEntry EntryNamed(const std::string& name, const std::string& key) {
  return {key, {{"Name", automation::Variant::FromText(name)}}, {}};
}

class RecordingObject final : public platform::CatalogObject {
 public:
  RecordingObject(StepLog& log, CatalogEntry present) : entry(std::move(present)), m_log(log) {}

  std::string Name() const override {
    m_log.Call("Name " + entry.Name());
    return entry.Name();
  }
  std::string Key() const override {
    m_log.Call("Key");
    return entry.key;
  }
  automation::Variant Value(std::string_view strName) const override {
    m_log.Call("Value " + std::string(strName));
    for (const auto& [name, value] : entry.values) {
      if (name == strName) return value;
    }
    return {};
  }
  void SetValue(std::string_view strName, const automation::Variant& vValue) override {
    m_log.Call("Set " + std::string(strName) + " = " + Shown(vValue));
    std::erase_if(entry.values, [&](const auto& known) { return known.first == strName; });
    entry.values.emplace_back(strName, vValue);
  }

  CatalogEntry entry;

 private:
  StepLog& m_log;
};

// A collection over entries in memory. Base is the port's class.
template <class Base>
class RecordingCollection : public Base {
 public:
  RecordingCollection(std::string name, StepLog& log, CatalogEntries& stored)
      : m_name(std::move(name)), m_log(log), m_stored(stored) {}

  void Populate() override {
    m_log.Call(m_name + ".Populate");
    m_objects.clear();
    m_removed.clear();
    for (const CatalogEntry& entry : m_stored)
      m_objects.push_back(std::make_shared<RecordingObject>(m_log, entry));
  }
  std::int32_t Count() const override {
    m_log.Call(m_name + ".Count");
    return static_cast<std::int32_t>(m_objects.size());
  }
  std::shared_ptr<platform::CatalogObject> Item(std::int32_t lngIndex) override {
    m_log.Call(m_name + ".Item " + std::to_string(lngIndex));
    return m_objects[Checked(lngIndex)];
  }
  std::shared_ptr<platform::CatalogObject> Add() override {
    m_log.Call(m_name + ".Add");
    static int last = 0;
    char key[40];
    std::snprintf(key, sizeof key, "{00000000-0000-0000-0000-%012d}", ++last);
    m_objects.push_back(std::make_shared<RecordingObject>(m_log, CatalogEntry{key, {}, {}}));
    return m_objects.back();
  }
  void Remove(std::int32_t lngIndex) override {
    m_log.Call(m_name + ".Remove " + std::to_string(lngIndex));
    const std::size_t index = Checked(lngIndex);
    m_removed.push_back(m_objects[index]->entry.key);
    m_objects.erase(m_objects.begin() + lngIndex);
  }
  void SaveChanges() override {
    m_log.Call(m_name + ".SaveChanges");
    for (const std::string& key : m_removed)
      std::erase_if(m_stored, [&](const CatalogEntry& entry) { return entry.key == key; });
    m_removed.clear();
    for (const auto& object : m_objects) Store(object->entry);
  }

 protected:
  StepLog& Log() const { return m_log; }
  CatalogEntries& Stored() const { return m_stored; }

 private:
  std::size_t Checked(std::int32_t index) const {
    if (index < 0 || static_cast<std::size_t>(index) >= m_objects.size())
      automation::Raise(automation::RuntimeError::SubscriptOutOfRange, "Catalog");
    return static_cast<std::size_t>(index);
  }
  void Store(const CatalogEntry& entry) {
    for (CatalogEntry& present : m_stored) {
      if (present.key != entry.key) continue;
      present.values = entry.values;
      return;
    }
    m_stored.push_back(entry);
  }

  std::string m_name;
  StepLog& m_log;
  CatalogEntries& m_stored;
  std::vector<std::shared_ptr<RecordingObject>> m_objects;
  std::vector<std::string> m_removed;  // keys
};

// Installs components into one package, or exports any.
class RecordingMtsUtil final : public platform::MtsUtil {
 public:
  RecordingMtsUtil(StepLog& log, CatalogEntry* package) : m_log(log), m_package(package) {}

  void InstallComponent(std::string_view strDllFile, std::string_view strTypelibFile,
                        std::string_view strProxyStubFile) override {
    m_log.Call("InstallComponent " + std::string(strDllFile) + ", " + std::string(strTypelibFile) + ", \"" +
               std::string(strProxyStubFile) + '"');
    if (m_package == nullptr) automation::Raise(automation::RuntimeError::MemberNotFound, "Catalog");
    m_package->components.emplace_back(strDllFile);
  }
  void ExportPackage(std::string_view strPackageKey, std::string_view strFileName,
                     std::int32_t lngOptions) override {
    m_log.Call("ExportPackage " + std::string(strFileName) + ", " + std::to_string(lngOptions));
    if (m_package != nullptr) automation::Raise(automation::RuntimeError::MemberNotFound, "Catalog");
    exportedKey = strPackageKey;
  }

  std::string exportedKey;

 private:
  StepLog& m_log;
  CatalogEntry* m_package;  // null for the utility of the packages
};

class RecordingPackages final : public RecordingCollection<platform::MtsCollection> {
 public:
  RecordingPackages(StepLog& log, CatalogEntries& stored, CatalogEntry* package = nullptr)
      : RecordingCollection(package == nullptr ? "Packages" : "Components", log,
                            package == nullptr ? stored : NoEntries()),
        m_packages(stored),
        m_package(package) {}

  std::shared_ptr<platform::MtsCollection> GetCollection(std::string_view strName,
                                                         std::string_view strKey) override {
    Log().Call("Packages.GetCollection " + std::string(strName));
    for (CatalogEntry& entry : m_packages) {
      if (entry.key == strKey) return std::make_shared<RecordingPackages>(Log(), m_packages, &entry);
    }
    automation::Raise(automation::RuntimeError::InvalidProcedureCall, "Catalog");
  }
  std::shared_ptr<platform::MtsUtil> GetUtilInterface() override {
    Log().Call(m_package == nullptr ? "Packages.GetUtilInterface" : "Components.GetUtilInterface");
    return std::make_shared<RecordingMtsUtil>(Log(), m_package);
  }

 private:
  // Components are kept with their package.
  static CatalogEntries& NoEntries() {
    static CatalogEntries none;
    return none;
  }

  CatalogEntries& m_packages;
  CatalogEntry* m_package;
};

class RecordingMtsCatalog final : public platform::MtsCatalog {
 public:
  RecordingMtsCatalog(StepLog& log, CatalogEntries& packages) : m_log(log), m_packages(packages) {}
  std::shared_ptr<platform::MtsCollection> GetCollection(std::string_view strName) override {
    m_log.Call("GetCollection " + std::string(strName));
    return std::make_shared<RecordingPackages>(m_log, m_packages);
  }

 private:
  StepLog& m_log;
  CatalogEntries& m_packages;
};

// The MTS of a machine, in memory.
class RecordingMtsCatalogs final : public platform::MtsCatalogs {
 public:
  explicit RecordingMtsCatalogs(StepLog& log) : m_log(log) {}
  std::unique_ptr<platform::MtsCatalog> Create() override {
    m_log.Call("Create");
    return std::make_unique<RecordingMtsCatalog>(m_log, packages);
  }
  CatalogEntries packages;

 private:
  StepLog& m_log;
};

class RecordingComPlusCatalog final : public platform::ComPlusCatalog {
 public:
  RecordingComPlusCatalog(StepLog& log, CatalogEntries& applications)
      : m_log(log), m_applications(applications) {}

  std::shared_ptr<platform::CatalogCollection> GetCollection(std::string_view strName) override {
    m_log.Call("GetCollection " + std::string(strName));
    return std::make_shared<RecordingCollection<platform::CatalogCollection>>("Applications", m_log,
                                                                              m_applications);
  }
  void InstallComponent(std::string_view strApplicationName, std::string_view strDllFile,
                        std::string_view strTypelibFile, std::string_view strProxyStubFile) override {
    m_log.Call("InstallComponent " + std::string(strApplicationName) + ", " + std::string(strDllFile) +
               ", \"" + std::string(strTypelibFile) + "\", \"" + std::string(strProxyStubFile) + '"');
    Find(strApplicationName).components.emplace_back(strDllFile);
  }
  void RefreshComponents() override { m_log.Call("RefreshComponents"); }
  void ExportApplication(std::string_view strApplicationName, std::string_view strFileName,
                         std::int32_t lngOptions) override {
    m_log.Call("ExportApplication " + std::string(strApplicationName) + ", " + std::string(strFileName) +
               ", " + std::to_string(lngOptions));
    Find(strApplicationName);
  }
  void ShutdownApplication(std::string_view strApplicationName) override {
    m_log.Call("ShutdownApplication " + std::string(strApplicationName));
    Find(strApplicationName);
  }

 private:
  CatalogEntry& Find(std::string_view name) const {
    for (CatalogEntry& entry : m_applications) {
      if (entry.Name() == name) return entry;
    }
    automation::Raise(automation::RuntimeError::InvalidProcedureCall, "Catalog");
  }

  StepLog& m_log;
  CatalogEntries& m_applications;
};

// The COM+ of a machine, in memory.
class RecordingComPlusCatalogs final : public platform::ComPlusCatalogs {
 public:
  explicit RecordingComPlusCatalogs(StepLog& log) : m_log(log) {}
  std::unique_ptr<platform::ComPlusCatalog> Create() override {
    m_log.Call("Create");
    return std::make_unique<RecordingComPlusCatalog>(m_log, applications);
  }
  CatalogEntries applications;

 private:
  StepLog& m_log;
};

class RecordingPump final : public platform::EventPump {
 public:
  explicit RecordingPump(StepLog& log) : m_log(log) {}
  void DeliverPending() override { m_log.Note("DeliverPending"); }

 private:
  StepLog& m_log;
};

}  // namespace hearthmake::support
