#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/catalog/CatalogFile.hpp"
#include "adapters/catalog/ComponentReader.hpp"
#include "adapters/catalog/FileComPlusCatalogs.hpp"
#include "adapters/catalog/FileMtsCatalogs.hpp"
#include "adapters/win32/Win32FileSystem.hpp"
#include "doubles/CatalogDoubles.hpp"
#include "doubles/ClassDouble.hpp"
#include "platform/SharedFile.hpp"
#include "platform/TypeLibReader.hpp"
#include "support/Win32Folder.hpp"

namespace hearthmake::support {

// A file in memory, for one process and one thread.
class MemoryFile final : public platform::SharedFile {
 public:
  const std::string& Path() const override { return m_path; }
  std::string Read() override { return m_bytes; }
  void Replace(std::string_view bytes) override { m_bytes = bytes; }
  std::shared_ptr<void> Lock() override { return nullptr; }

 private:
  std::string m_path = "catalog.json";
  std::string m_bytes;
};

// Reads the same library from every file: "Orders" with the classes Order and Line.
class OrdersTypeLib final : public platform::TypeLibReader {
 public:
  platform::TypeLibInfo Read(std::string_view /*path*/) override {
    platform::TypeLibInfo info;
    info.guid = Id('F');
    info.name = "Orders";
    return info;
  }
  std::vector<platform::TypeDescription> ReadTypes(std::string_view /*path*/) override {
    return {Class("Order", '1'), Class("Line", '2')};
  }

 private:
  static std::string Id(char last) {
    return std::string("{00000001-0000-0000-0000-00000000000") + last + "}";
  }
  static platform::TypeDescription Class(const std::string& name, char id) {
    platform::TypeDescription type;
    type.kind = platform::TypeKind::CoClass;
    type.guid = Id(id);
    type.name = name;
    type.flags = 2;  // can be created
    return type;
  }
};

// A machine whose administration objects of MTS and COM+ stand on a catalog in a file.
class CatalogDoublesBench {
 public:
  std::string Binary() const { return m_folder.Path("Orders.dll"); }
  std::string FreeFile() const { return m_folder.Path("free.pak"); }
  bool Exists(const std::string& path) const { return m_files->FileExists(path); }

  std::shared_ptr<doubles::CallLog> log = std::make_shared<doubles::CallLog>();

 private:
  std::shared_ptr<const catalog::ComponentReader> Components() const {
    return std::make_shared<catalog::ComponentReader>(m_files, std::make_shared<OrdersTypeLib>());
  }

  doubles::ComThread m_com;
  Win32Folder m_folder;
  std::string m_binary = m_folder.MakeFile("Orders.dll", "binary");
  std::shared_ptr<win32::Win32FileSystem> m_files = std::make_shared<win32::Win32FileSystem>();
  std::shared_ptr<const catalog::CatalogFile> m_file =
      std::make_shared<catalog::CatalogFile>(std::make_shared<MemoryFile>());
  catalog::FileMtsCatalogs m_mts{m_file, Components()};
  catalog::FileComPlusCatalogs m_comPlus{m_file, Components()};
  doubles::ClassDouble m_mtsClass{
      "MTSAdmin.Catalog.1",
      [this] { return doubles::MakeDouble<doubles::MtsCatalogDouble>(log, m_mts.Create()); }};
  doubles::ClassDouble m_comPlusClass{
      "COMAdmin.COMAdminCatalog",
      [this] { return doubles::MakeDouble<doubles::ComPlusCatalogDouble>(log, m_comPlus.Create()); }};
};

}  // namespace hearthmake::support
