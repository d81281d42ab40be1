#include "adapters/dao/DaoDatabase.hpp"

#include "adapters/dao/DaoCall.hpp"
#include "adapters/dao/DaoRecordset.hpp"

namespace hearthmake::dao {

DaoDatabase::~DaoDatabase() {
  try {
    Close();
  } catch (const automation::Error&) {
    return;  // it is given up in any case
  }
}

std::unique_ptr<platform::Recordset> DaoDatabase::OpenRecordset(const std::string& sql,
                                                                platform::RecordsetType type) {
  return DaoCall(kDatabaseSource, [&] {
    return std::make_unique<DaoRecordset>(
        m_database.Object("OpenRecordset", {sql, static_cast<std::int32_t>(type)}));
  });
}

void DaoDatabase::Execute(const std::string& sql) {
  DaoCall(kDatabaseSource, [&] { m_database.Call("Execute", {sql}); });
}

void DaoDatabase::Close() {
  if (!std::exchange(m_isOpen, false)) return;
  DaoCall(kDatabaseSource, [&] { m_database.Call("Close"); });
}

}  // namespace hearthmake::dao
