#pragma once

#include "adapters/win32/LateObject.hpp"
#include "platform/Database.hpp"

namespace hearthmake::dao {

// The default workspace of a DAO engine. Its errors are the engine's: number, source and words.
class DaoWorkspace final : public platform::Workspace {
 public:
  // A DAO.DBEngine of any version.
  explicit DaoWorkspace(const win32::LateObject& engine);

  std::shared_ptr<platform::Database> OpenDatabase(const std::string& path) override;
  void BeginTrans() override;
  void CommitTrans() override;
  void Rollback() override;

 private:
  win32::LateObject m_workspace;
};

}  // namespace hearthmake::dao
