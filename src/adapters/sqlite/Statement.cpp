#include "adapters/sqlite/Statement.hpp"

#include <sqlite3.h>

namespace hearthmake::sqlite {

Statement::~Statement() { sqlite3_finalize(m_handle); }

Statement* StatementCache::Get(sqlite3* db, std::string_view text, int& result) {
  result = SQLITE_OK;
  if (const auto found = m_byText.find(text); found != m_byText.end()) {
    m_entries.splice(m_entries.begin(), m_entries, found->second);
    return &found->second->statement;
  }
  sqlite3_stmt* handle = nullptr;
  result = sqlite3_prepare_v3(db, text.data(), static_cast<int>(text.size()), SQLITE_PREPARE_PERSISTENT,
                              &handle, nullptr);
  if (result != SQLITE_OK) return nullptr;
  if (m_entries.size() >= m_capacity) {
    m_byText.erase(m_entries.back().text);
    m_entries.pop_back();
  }
  m_entries.emplace_front(text, handle);
  m_byText.emplace(m_entries.front().text, m_entries.begin());
  return &m_entries.front().statement;
}

void StatementCache::Clear() {
  m_byText.clear();
  m_entries.clear();
}

StatementReset::~StatementReset() {
  sqlite3_reset(m_statement.Handle());
  sqlite3_clear_bindings(m_statement.Handle());
}

}  // namespace hearthmake::sqlite
