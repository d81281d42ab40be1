#include "adapters/dao/DaoRecordset.hpp"

#include "adapters/dao/DaoCall.hpp"

namespace hearthmake::dao {

namespace {

using automation::Variant;

// The value of a field by a conversion, and what that gives for Null.
template <class T>
T Read(const win32::LateObject& field, T (*convert)(const Variant&)) {
  const Variant value = field.Call("Value");
  return value.IsNull() ? T{} : convert(value);
}

}  // namespace

DaoRecordset::~DaoRecordset() {
  try {
    Close();
  } catch (const automation::Error&) {
    return;  // it is given up in any case
  }
}

void DaoRecordset::Do(const char* method) {
  DaoCall(kRecordsetSource, [&] { m_recordset.Call(method); });
}

bool DaoRecordset::AtEnd() const {
  return DaoCall(kRecordsetSource, [&] { return automation::ToBoolean(m_recordset.Call("EOF")); });
}

void DaoRecordset::Close() {
  if (std::exchange(m_isOpen, false)) Do("Close");
}

const win32::LateObject& DaoRecordset::Field(std::string_view column) const {
  const auto known = m_fields.find(column);
  if (known != m_fields.end()) return known->second;
  return m_fields.emplace(column, m_recordset.Object("Fields").Object("Item", {column})).first->second;
}

bool DaoRecordset::IsNull(std::string_view column) const {
  return DaoCall(kRecordsetSource, [&] { return Field(column).Call("Value").IsNull(); });
}

std::string DaoRecordset::GetText(std::string_view column) const {
  return DaoCall(kRecordsetSource, [&] { return Read(Field(column), &automation::ToText); });
}

std::int32_t DaoRecordset::GetLong(std::string_view column) const {
  return DaoCall(kRecordsetSource, [&] { return Read(Field(column), &automation::ToLong); });
}

bool DaoRecordset::GetBoolean(std::string_view column) const {
  return DaoCall(kRecordsetSource, [&] { return Read(Field(column), &automation::ToBoolean); });
}

double DaoRecordset::GetDate(std::string_view column) const {
  return DaoCall(kRecordsetSource, [&] { return Read(Field(column), &automation::ToDate); });
}

void DaoRecordset::SetValue(std::string_view column, const Variant& value) {
  DaoCall(kRecordsetSource, [&] { Field(column).Let("Value", {value}); });
}

void DaoRecordset::SetNull(std::string_view column) { SetValue(column, Variant::Null()); }

void DaoRecordset::SetText(std::string_view column, std::string_view value) {
  SetValue(column, Variant::FromText(value));
}

void DaoRecordset::SetLong(std::string_view column, std::int32_t value) {
  SetValue(column, Variant::FromLong(value));
}

void DaoRecordset::SetBoolean(std::string_view column, bool value) {
  SetValue(column, Variant::FromBoolean(value));
}

void DaoRecordset::SetDate(std::string_view column, double value) {
  SetValue(column, Variant::FromDate(value));
}

}  // namespace hearthmake::dao
