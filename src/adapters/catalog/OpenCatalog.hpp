#pragma once

#include <functional>
#include <memory>
#include <set>
#include <string>
#include <string_view>

#include "adapters/catalog/CatalogFile.hpp"
#include "adapters/catalog/ComponentReader.hpp"

namespace hearthmake::catalog {

// One opened catalog of one kind: what its collections and utilities share.
//
// Protection is that of the real catalogs. A package whose "Deleteable" is "N" is not removed. One whose
// "Changeable" is "N" takes no other values, components or roles, until a save sets "Changeable" to "Y";
// setting what is set already is no change. Whoever added a package goes on with it until the catalog is
// closed: a deployment says "Changeable" before it installs the components.
//
// A repeated deployment that first removes a protected package fails therefore, here as there. Unprotect
// is the way out.
class OpenCatalog {
 public:
  OpenCatalog(PackageKind kind, std::shared_ptr<const CatalogFile> file,
              std::shared_ptr<const ComponentReader> components)
      : m_kind(kind), m_file(std::move(file)), m_components(std::move(components)) {}

  PackageKind Kind() const { return m_kind; }
  const CatalogFile& File() const { return *m_file; }
  const ComponentReader& Components() const { return *m_components; }

  // The package with this key; error 45 when it isn't installed (any more).
  Package& Require(CatalogData& data, std::string_view key) const;
  // The first of this name, or with this key.
  Package& RequireByName(CatalogData& data, std::string_view nameOrKey) const;

  // For what was added by this catalog, see above.
  void NoteAdded(const std::string& key) { m_added.insert(key); }
  // Error 70, source "Catalog", when the package is protected.
  void RequireDeleteable(const Package& package) const;
  void RequireChangeable(const Package& package) const;

  // Registers all classes of a binary in the package at once; one that was installed before is replaced.
  void Install(const std::function<Package&(CatalogData&)>& find, std::string_view dll,
               std::string_view typeLib, std::string_view proxyStub) const;
  // Reads the type libraries of all components again. What can't be read stays as it was; then the first
  // such failure is raised, when the others are stored.
  void Refresh() const;

 private:
  std::string Described(const Package& package) const;

  PackageKind m_kind;
  std::shared_ptr<const CatalogFile> m_file;
  std::shared_ptr<const ComponentReader> m_components;
  std::set<std::string> m_added;  // keys
};

// Lets the package be removed and changed again, whatever it says. Error 45 when it isn't installed.
void Unprotect(const CatalogFile& file, PackageKind kind, std::string_view nameOrKey);
// Removes the package, protected or not. Error 45 when it isn't installed.
void RemovePackage(const CatalogFile& file, PackageKind kind, std::string_view nameOrKey);

}  // namespace hearthmake::catalog
