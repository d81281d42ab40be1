#include "adapters/sqlite/ConnectionPool.hpp"

#include <algorithm>
#include <utility>

#include "adapters/sqlite/SqliteError.hpp"

namespace hearthmake::sqlite {

namespace {

// A run works on one database; a host that looks at others keeps these few at hand.
constexpr std::size_t kParked = 4;

}  // namespace

std::shared_ptr<Connection> ConnectionPool::Acquire(const std::string& posixPath,
                                                    const std::string& dosPath) {
  const FileStamp now = disk::StampOf(posixPath);
  for (User& user : m_users) {
    // Two connections of one transaction would wait for each other's lock for ever.
    if (now.size < 0 || !user.connection->IsOpenOn(now)) continue;
    ++user.count;
    return user.connection;
  }
  std::shared_ptr<Connection> connection = TakeParked(posixPath, now);
  if (!connection) connection = std::make_shared<Connection>(posixPath, dosPath, m_busyTimeout);
  m_users.push_back({connection});
  return connection;
}

std::shared_ptr<Connection> ConnectionPool::TakeParked(const std::string& posixPath, const FileStamp& now) {
  const auto found = std::find_if(m_parked.begin(), m_parked.end(),
                                  [&](const auto& parked) { return parked->PosixPath() == posixPath; });
  if (found == m_parked.end()) return nullptr;
  std::shared_ptr<Connection> connection = std::move(*found);
  m_parked.erase(found);
  // One of another file, or of the same file with other contents, closes here, before the new one opens.
  if (!connection->IsParkedOn(now)) return nullptr;
  return connection;
}

void ConnectionPool::Release(const std::shared_ptr<Connection>& connection) noexcept {
  const auto found = std::find_if(m_users.begin(), m_users.end(),
                                  [&](const User& user) { return user.connection == connection; });
  if (found == m_users.end() || --found->count > 0) return;
  m_users.erase(found);
  const bool isOfUse = connection->Park();
  // A closed database is to be in nobody's way.
  if (!isOfUse || !disk::OpenFilesCanBeReplaced()) return;
  std::erase_if(m_parked, [&](const auto& parked) { return parked->PosixPath() == connection->PosixPath(); });
  if (m_parked.size() >= kParked) m_parked.erase(m_parked.begin());
  m_parked.push_back(connection);
}

void ConnectionPool::RequireTransaction() const {
  if (m_level > 0) return;
  RaiseDao(DaoError::NoTransaction, kWorkspaceSource,
           "You tried to commit or rollback a transaction without first using BeginTrans.");
}

void ConnectionPool::Commit() {
  RequireTransaction();
  for (const User& user : m_users) user.connection->Commit(m_level);
  --m_level;
}

void ConnectionPool::Rollback() {
  RequireTransaction();
  for (const User& user : m_users) user.connection->Rollback(m_level);
  --m_level;
}

}  // namespace hearthmake::sqlite
