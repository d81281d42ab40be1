#pragma once

#include <map>
#include <string>
#include <utility>

#include "adapters/win32/LateObject.hpp"
#include "platform/Database.hpp"

namespace hearthmake::dao {

class DaoRecordset final : public platform::Recordset {
 public:
  explicit DaoRecordset(win32::LateObject recordset) : m_recordset(std::move(recordset)) {}
  ~DaoRecordset() override;

  bool AtEnd() const override;
  void MoveNext() override { Do("MoveNext"); }
  void AddNew() override { Do("AddNew"); }
  void Edit() override { Do("Edit"); }
  void Update() override { Do("Update"); }
  void Close() override;

  bool IsNull(std::string_view column) const override;
  std::string GetText(std::string_view column) const override;
  std::int32_t GetLong(std::string_view column) const override;
  bool GetBoolean(std::string_view column) const override;
  double GetDate(std::string_view column) const override;

  void SetNull(std::string_view column) override;
  void SetText(std::string_view column, std::string_view value) override;
  void SetLong(std::string_view column, std::int32_t value) override;
  void SetBoolean(std::string_view column, bool value) override;
  void SetDate(std::string_view column, double value) override;

 private:
  void Do(const char* method);
  const win32::LateObject& Field(std::string_view column) const;
  void SetValue(std::string_view column, const automation::Variant& value);

  win32::LateObject m_recordset;
  // By column: a Field follows its recordset from row to row, and finding one costs more than using it.
  mutable std::map<std::string, win32::LateObject, std::less<>> m_fields;
  bool m_isOpen = true;
};

}  // namespace hearthmake::dao
