#pragma once

#include <cstddef>
#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

struct sqlite3;
struct sqlite3_stmt;

namespace hearthmake::sqlite {

class SelectPlan;

// One prepared statement with what is known of its result. Owned by a StatementCache.
class Statement {
 public:
  explicit Statement(sqlite3_stmt* handle) : m_handle(handle) {}
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;
  ~Statement();

  sqlite3_stmt* Handle() const { return m_handle; }

  // The description of the result, made at the first run and again when the tables have changed.
  std::shared_ptr<SelectPlan> plan;

 private:
  sqlite3_stmt* m_handle;
};

// The prepared statements of one connection by their texts; the one used longest ago gives way.
class StatementCache {
 public:
  explicit StatementCache(std::size_t capacity) : m_capacity(capacity) {}

  // The statement of that text, prepared when it is not at hand. It stays valid until as many others
  // have been asked for as the cache holds. Returns null, with the engine's code in result, when SQLite
  // refuses the text.
  Statement* Get(sqlite3* db, std::string_view text, int& result);
  void Clear();

 private:
  struct Entry {
    Entry(std::string_view sql, sqlite3_stmt* handle) : text(sql), statement(handle) {}
    std::string text;
    Statement statement;
  };

  std::size_t m_capacity;
  std::list<Entry> m_entries;  // the one used last in front
  std::unordered_map<std::string_view, std::list<Entry>::iterator> m_byText;
};

// Takes a statement back to its start, whatever happened to it, when the scope ends.
class StatementReset {
 public:
  explicit StatementReset(Statement& statement) : m_statement(statement) {}
  StatementReset(const StatementReset&) = delete;
  StatementReset& operator=(const StatementReset&) = delete;
  ~StatementReset();

 private:
  Statement& m_statement;
};

}  // namespace hearthmake::sqlite
