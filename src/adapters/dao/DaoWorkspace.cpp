#include "adapters/dao/DaoWorkspace.hpp"

#include "adapters/dao/DaoCall.hpp"
#include "adapters/dao/DaoDatabase.hpp"

namespace hearthmake::dao {

namespace {

win32::LateObject DefaultWorkspace(const win32::LateObject& engine) {
  return DaoCall(kWorkspaceSource, [&] { return engine.Object("Workspaces").Object("Item", {0}); });
}

}  // namespace

DaoWorkspace::DaoWorkspace(const win32::LateObject& engine) : m_workspace(DefaultWorkspace(engine)) {}

std::shared_ptr<platform::Database> DaoWorkspace::OpenDatabase(const std::string& path) {
  return DaoCall(kWorkspaceSource,
                 [&] { return std::make_shared<DaoDatabase>(m_workspace.Object("OpenDatabase", {path})); });
}

void DaoWorkspace::BeginTrans() {
  DaoCall(kWorkspaceSource, [&] { m_workspace.Call("BeginTrans"); });
}

void DaoWorkspace::CommitTrans() {
  DaoCall(kWorkspaceSource, [&] { m_workspace.Call("CommitTrans"); });
}

void DaoWorkspace::Rollback() {
  DaoCall(kWorkspaceSource, [&] { m_workspace.Call("Rollback"); });
}

}  // namespace hearthmake::dao
