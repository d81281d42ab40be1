#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/catalog/Properties.hpp"

namespace hearthmake::catalog {

// What a catalog holds, as plain data.

struct Entry {
  std::string key;  // a GUID with braces
  Properties properties;
};

// A class of an installed component; its key is its class id.
struct InstalledClass : Entry {
  std::string progId;
};

// A server binary that was installed. DOS paths, as they were given.
struct Component {
  std::string dll;
  std::string typeLib;    // the file that its classes were read from when that is not the binary; or empty
  std::string proxyStub;  // may be empty
  std::string libraryId;
  std::string libraryName;
  std::string libraryVersion;  // "1.0", hexadecimal
  std::vector<InstalledClass> classes;
};

struct Export {
  std::string file;
  std::int32_t options = 0;
};

// An MTS package or a COM+ application.
struct Package : Entry {
  std::vector<Component> components;
  std::vector<Entry> roles;
  std::vector<Export> exports;  // one for each file

  std::string Name() const { return automation::ToText(properties.Value("Name")); }
};

enum class PackageKind { Mts, ComPlus };

// "package", "application".
constexpr const char* WordFor(PackageKind kind) {
  return kind == PackageKind::Mts ? "package" : "application";
}

struct CatalogData {
  std::vector<Package> packages;
  std::vector<Package> applications;

  std::vector<Package>& Of(PackageKind kind) { return kind == PackageKind::Mts ? packages : applications; }
  const std::vector<Package>& Of(PackageKind kind) const {
    return kind == PackageKind::Mts ? packages : applications;
  }
};

}  // namespace hearthmake::catalog
