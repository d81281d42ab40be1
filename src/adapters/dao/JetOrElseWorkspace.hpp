#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "adapters/dao/JetFile.hpp"
#include "platform/Database.hpp"

namespace hearthmake::dao {

// Whether a DAO engine is installed that opens the Jet file at a path; false for another file.
bool HasEngineFor(const std::string& path);

// The workspace of a Windows machine: a Jet file is opened by the DAO engine that is installed for its
// format, anything else, and a Jet file where there is no such engine, by another workspace. Which it is, is
// looked at each time that a database is opened.
//
// Transactions span both, and commit one after the other: when a later one fails, the first is done already
// and Rollback ends the rest.
class JetOrElseWorkspace final : public platform::Workspace {
 public:
  explicit JetOrElseWorkspace(std::shared_ptr<platform::Workspace> otherwise);

  std::shared_ptr<platform::Database> OpenDatabase(const std::string& path) override;
  void BeginTrans() override;
  void CommitTrans() override;
  void Rollback() override;

 private:
  // A workspace and how many transactions are open in it.
  struct Side {
    std::shared_ptr<platform::Workspace> workspace;
    int depth = 0;
  };

  Side* EngineFor(JetFormat format);
  void Begin(Side& side);
  void End(void (platform::Workspace::*end)());

  std::vector<std::unique_ptr<Side>> m_sides;  // the first is the other workspace
  std::map<std::string, Side*> m_engines;      // by ProgID, of those that were made
  int m_depth = 0;
};

}  // namespace hearthmake::dao
