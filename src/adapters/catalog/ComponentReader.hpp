#pragma once

#include <memory>
#include <string_view>

#include "adapters/catalog/CatalogData.hpp"
#include "platform/FileSystem.hpp"
#include "platform/TypeLibReader.hpp"

namespace hearthmake::catalog {

// Finds out what a server binary brings, from its type library.
class ComponentReader {
 public:
  ComponentReader(std::shared_ptr<platform::FileSystem> files,
                  std::shared_ptr<platform::TypeLibReader> typeLibs)
      : m_files(std::move(files)), m_typeLibs(std::move(typeLibs)) {}

  // DOS paths; the classes are read from the type-library file where one is given, else from the binary.
  // Error 53 with the path for a file that is missing, 45 for a binary without a type library or without a
  // class that can be created, source "Catalog".
  Component Read(std::string_view dll, std::string_view typeLib, std::string_view proxyStub) const;
  // Reads it again. A class that is still there keeps its properties.
  void Refresh(Component& component) const;

  platform::FileSystem& Files() const { return *m_files; }

 private:
  void RequireFile(std::string_view path) const;
  void ReadClasses(Component& component) const;

  std::shared_ptr<platform::FileSystem> m_files;
  std::shared_ptr<platform::TypeLibReader> m_typeLibs;
};

}  // namespace hearthmake::catalog
