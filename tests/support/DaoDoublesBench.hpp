#pragma once

#include <memory>
#include <string>

#include "adapters/sqlite/BuildSchema.hpp"
#include "adapters/sqlite/SqliteWorkspace.hpp"
#include "doubles/ClassDouble.hpp"
#include "doubles/DaoDoubles.hpp"
#include "support/Win32Folder.hpp"

namespace hearthmake::support {

// A machine with one DAO engine, whose "Jet files" are SQLite's.
class DaoDoublesBench {
 public:
  explicit DaoDoublesBench(const char* progId) : m_class(progId, [this] { return MakeEngine(); }) {}

  static std::unique_ptr<platform::Workspace> MakeSqlite() {
    return std::make_unique<sqlite::SqliteWorkspace>([](std::string_view path) { return std::string(path); });
  }
  std::string MakeDatabase() {
    const std::string path = m_folder.Path("Build" + std::to_string(++m_made) + ".mdb");
    sqlite::CreateBuildDatabase(path);
    return path;
  }

  std::shared_ptr<doubles::CallLog> log = std::make_shared<doubles::CallLog>();

 private:
  automation::Ref<IDispatch> MakeEngine() {
    return doubles::MakeDouble<doubles::DbEngineDouble>(log, MakeSqlite());
  }

  doubles::ComThread m_com;
  Win32Folder m_folder;
  int m_made = 0;
  doubles::ClassDouble m_class;
};

}  // namespace hearthmake::support
