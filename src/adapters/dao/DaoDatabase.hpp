#pragma once

#include <utility>

#include "adapters/win32/LateObject.hpp"
#include "platform/Database.hpp"

namespace hearthmake::dao {

class DaoDatabase final : public platform::Database {
 public:
  explicit DaoDatabase(win32::LateObject database) : m_database(std::move(database)) {}
  ~DaoDatabase() override;

  std::unique_ptr<platform::Recordset> OpenRecordset(const std::string& sql,
                                                     platform::RecordsetType type) override;
  void Execute(const std::string& sql) override;
  void Close() override;

 private:
  win32::LateObject m_database;
  bool m_isOpen = true;
};

}  // namespace hearthmake::dao
