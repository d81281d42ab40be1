#include "adapters/catalog/OpenCatalog.hpp"

#include <algorithm>
#include <optional>

#include "automation/Error.hpp"
#include "automation/Text.hpp"

namespace hearthmake::catalog {

namespace {

using automation::RuntimeError;
using automation::Variant;

constexpr const char* kSource = "Catalog";

[[noreturn]] void RaiseMissing(PackageKind kind, std::string_view nameOrKey) {
  automation::Raise(
      automation::kInvalidValue, kSource,
      "There is no " + std::string(WordFor(kind)) + " '" + std::string(nameOrKey) + "' in the catalog.");
}

Package* FindByKey(std::vector<Package>& packages, std::string_view key) {
  const auto found = std::find_if(packages.begin(), packages.end(), [&](const Package& package) {
    return automation::EqualsIgnoreCaseAscii(package.key, key);
  });
  return found == packages.end() ? nullptr : &*found;
}

Package* FindByName(std::vector<Package>& packages, std::string_view name) {
  const auto found = std::find_if(packages.begin(), packages.end(),
                                  [&](const Package& package) { return package.Name() == name; });
  return found == packages.end() ? nullptr : &*found;
}

Package& Find(CatalogData& data, PackageKind kind, std::string_view nameOrKey) {
  std::vector<Package>& packages = data.Of(kind);
  if (Package* package = FindByName(packages, nameOrKey)) return *package;
  if (Package* package = FindByKey(packages, nameOrKey)) return *package;
  RaiseMissing(kind, nameOrKey);
}

bool IsNo(const Package& package, const char* property) {
  const Variant value = package.properties.Value(property);
  if (value.Type() == automation::VariantType::Boolean) return !value.AsBoolean();
  return value.Type() == automation::VariantType::String &&
         automation::EqualsIgnoreCaseAscii(automation::ToText(value), "N");
}

}  // namespace

Package& OpenCatalog::Require(CatalogData& data, std::string_view key) const {
  if (Package* package = FindByKey(data.Of(m_kind), key)) return *package;
  RaiseMissing(m_kind, key);
}

Package& OpenCatalog::RequireByName(CatalogData& data, std::string_view nameOrKey) const {
  return Find(data, m_kind, nameOrKey);
}

std::string OpenCatalog::Described(const Package& package) const {
  return "the " + std::string(WordFor(m_kind)) + " '" + package.Name() + "' is protected against ";
}

void OpenCatalog::RequireDeleteable(const Package& package) const {
  if (!IsNo(package, "Deleteable")) return;
  automation::Raise(RuntimeError::PermissionDenied, kSource,
                    Described(package) + "deletion (Deleteable is \"N\")");
}

void OpenCatalog::RequireChangeable(const Package& package) const {
  if (!IsNo(package, "Changeable") || m_added.contains(package.key)) return;
  automation::Raise(RuntimeError::PermissionDenied, kSource,
                    Described(package) + "changes (Changeable is \"N\")");
}

void OpenCatalog::Install(const std::function<Package&(CatalogData&)>& find, std::string_view dll,
                          std::string_view typeLib, std::string_view proxyStub) const {
  // Before the lock: reading may take its time.
  Component component = m_components->Read(dll, typeLib, proxyStub);
  m_file->Change([&](CatalogData& data) {
    Package& package = find(data);
    RequireChangeable(package);
    auto& components = package.components;
    const auto known = std::find_if(components.begin(), components.end(), [&](const Component& other) {
      return automation::EqualsIgnoreCase(other.dll, component.dll);
    });
    if (known == components.end()) {
      components.push_back(std::move(component));
    } else {
      *known = std::move(component);
    }
  });
}

void OpenCatalog::Refresh() const {
  std::optional<automation::Error> failure;
  m_file->Change([&](CatalogData& data) {
    for (Package& package : data.Of(m_kind)) {
      for (Component& component : package.components) {
        try {
          m_components->Refresh(component);
        } catch (const automation::Error& error) {
          if (!failure) failure.emplace(error.Number(), kSource, package.Name() + ": " + error.Description());
        }
      }
    }
  });
  if (failure) throw automation::Error(*failure);
}

void Unprotect(const CatalogFile& file, PackageKind kind, std::string_view nameOrKey) {
  file.Change([&](CatalogData& data) {
    Package& package = Find(data, kind, nameOrKey);
    package.properties.Set("Deleteable", Variant::FromText("Y"));
    package.properties.Set("Changeable", Variant::FromText("Y"));
  });
}

void RemovePackage(const CatalogFile& file, PackageKind kind, std::string_view nameOrKey) {
  file.Change([&](CatalogData& data) {
    const Package& package = Find(data, kind, nameOrKey);
    data.Of(kind).erase(data.Of(kind).begin() + (&package - data.Of(kind).data()));
  });
}

}  // namespace hearthmake::catalog
