#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "adapters/sqlite/Connection.hpp"

namespace hearthmake::sqlite {

// The connections of one workspace, those in use and those parked for the next open, and the
// transaction that spans them.
class ConnectionPool {
 public:
  explicit ConnectionPool(std::chrono::milliseconds busyTimeout) : m_busyTimeout(busyTimeout) {}

  // A connection to the file: one in use, one parked if the file has not changed since, else a new one
  // (whose errors are Connection's). Every Acquire has its Release.
  std::shared_ptr<Connection> Acquire(const std::string& posixPath, const std::string& dosPath);
  // The last user's release rolls back what is open and parks the connection.
  void Release(const std::shared_ptr<Connection>& connection) noexcept;

  int Level() const { return m_level; }
  void Begin() { ++m_level; }
  // Errors ("DAO.Workspace"): 3034 without Begin; what the engine says, and then the transaction is
  // still to be rolled back.
  void Commit();
  void Rollback();

 private:
  struct User {
    std::shared_ptr<Connection> connection;
    int count = 1;
  };

  void RequireTransaction() const;
  std::shared_ptr<Connection> TakeParked(const std::string& posixPath, const FileStamp& now);

  std::chrono::milliseconds m_busyTimeout;
  std::vector<User> m_users;
  std::vector<std::shared_ptr<Connection>> m_parked;  // the one parked last behind
  int m_level = 0;
};

}  // namespace hearthmake::sqlite
