#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "adapters/catalog/CatalogFile.hpp"
#include "adapters/catalog/ComponentReader.hpp"
#include "adapters/posix/PosixFileSystem.hpp"
#include "adapters/posix/PosixSharedFile.hpp"
#include "automation/Error.hpp"
#include "support/PosixFolder.hpp"

namespace hearthmake::support {

// Type libraries that a test makes up, by DOS path.
class MadeUpTypeLibs final : public platform::TypeLibReader {
 public:
  struct Library {
    platform::TypeLibInfo info;
    std::vector<platform::TypeDescription> types;
  };

  platform::TypeLibInfo Read(std::string_view path) override { return Find(path).info; }
  std::vector<platform::TypeDescription> ReadTypes(std::string_view path) override {
    return Find(path).types;
  }
  // A library whose classes can be created, with ids made of the number and their position.
  void Put(const std::string& path, const std::string& name, const std::vector<std::string>& classes,
           char number) {
    Library library;
    library.info.guid = Id(number, 'F');
    library.info.name = name;
    library.info.majorVersion = 2;
    library.info.minorVersion = 11;
    char position = '0';
    for (const std::string& item : classes) {
      platform::TypeDescription type;
      type.kind = platform::TypeKind::CoClass;
      type.guid = Id(number, position++);
      type.name = item;
      type.flags = 2;
      library.types.push_back(type);
    }
    libraries[path] = library;
  }
  static std::string Id(char number, char position) {
    return std::string("{0000000") + number + "-0000-0000-0000-00000000000" + position + "}";
  }

  std::map<std::string, Library> libraries;

 private:
  const Library& Find(std::string_view path) const {
    const auto found = libraries.find(std::string(path));
    if (found == libraries.end())
      automation::Raise(automation::kInvalidValue, "TypeLibReader", std::string(path) + " is no library");
    return found->second;
  }
};

// A file catalog in a folder of its own: C: is <folder>/drive_c, the catalog <folder>/catalog.json. There
// is the server C:\Orders.dll with the classes Orders.Order and Orders.Line.
class CatalogBench {
 public:
  CatalogBench() {
    root.MakeFile("drive_c/Orders.dll", "binary");
    typeLibs->Put(kBinary, "Orders", {"Order", "Line"}, '1');
  }

  static constexpr const char* kBinary = "C:\\Orders.dll";

  std::string Path() const { return root.Path("catalog.json"); }
  std::string Text() const { return root.Content("catalog.json"); }
  void Write(const std::string& text) const { root.MakeFile("catalog.json", text); }
  std::shared_ptr<const catalog::CatalogFile> File() const {
    return std::make_shared<catalog::CatalogFile>(
        std::make_shared<posix::PosixSharedFile>(Path(), catalog::CatalogFile::kLargest));
  }
  std::shared_ptr<const catalog::ComponentReader> Components() const {
    return std::make_shared<catalog::ComponentReader>(files, typeLibs);
  }

  PosixFolder root;
  std::shared_ptr<posix::DriveMap> drives =
      std::make_shared<posix::DriveMap>(posix::DriveMap::BuiltIn(root.Path()));
  std::shared_ptr<posix::PosixFileSystem> files = std::make_shared<posix::PosixFileSystem>(drives);
  std::shared_ptr<MadeUpTypeLibs> typeLibs = std::make_shared<MadeUpTypeLibs>();
};

}  // namespace hearthmake::support
