#pragma once

#include <sqlite3.h>

#include <map>
#include <memory>
#include <string>
#include <utility>

#include "doubles/DispatchDouble.hpp"
#include "platform/Database.hpp"

namespace hearthmake::doubles {

// A DAO engine as it looks to automation, with a workspace of the port over SQLite behind it. Names,
// parameters and kinds of members are those of the real one.

// The port tells no types of columns; the file does. By name in lower case, which is enough for the tables of
// a build database: no two of them have columns of one name and different types.
using ColumnTypes = std::map<std::string, std::string>;

inline ColumnTypes ReadColumnTypes(const std::string& path) {
  ColumnTypes types;
  sqlite3* file = nullptr;
  sqlite3_open_v2(path.c_str(), &file, SQLITE_OPEN_READONLY, nullptr);
  const auto add = [](void* found, int, char** values, char**) {
    (*static_cast<ColumnTypes*>(found))[values[0]] = values[1];
    return 0;
  };
  sqlite3_exec(file,
               "SELECT lower(c.name), c.type FROM sqlite_master t JOIN pragma_table_info(t.name) c "
               "WHERE t.type = 'table'",
               add, &types, nullptr);
  sqlite3_close(file);
  return types;
}

class FieldDouble final : public DispatchDouble {
 public:
  FieldDouble(std::shared_ptr<CallLog> log, std::shared_ptr<platform::Recordset> rows, std::string name,
              std::string type)
      : DispatchDouble("Field", std::move(log)),
        m_rows(std::move(rows)),
        m_name(std::move(name)),
        m_type(std::move(type)) {
    Get("Value", [this] { return Value(); });
    Let("Value", 1, [this](CallArguments a) {
      SetValue(a[0]);
      return Answer();
    });
  }

 private:
  using Variant = automation::Variant;

  Variant Value() const {
    if (m_rows->IsNull(m_name)) return Variant::Null();
    if (m_type == "INTEGER") return Variant::FromLong(m_rows->GetLong(m_name));
    if (m_type == "BOOLEAN") return Variant::FromBoolean(m_rows->GetBoolean(m_name));
    if (m_type == "REAL") return Variant::FromDate(m_rows->GetDate(m_name));
    return m_type.empty() ? Computed() : Variant::FromText(m_rows->GetText(m_name));
  }
  // Of no table: a number where it can be one.
  Variant Computed() const {
    try {
      return Variant::FromLong(m_rows->GetLong(m_name));
    } catch (const automation::Error&) {
      return Variant::FromText(m_rows->GetText(m_name));
    }
  }
  void SetValue(const Variant& value) {
    switch (value.Type()) {
      case automation::VariantType::Null: return m_rows->SetNull(m_name);
      case automation::VariantType::Long: return m_rows->SetLong(m_name, value.AsLong());
      case automation::VariantType::Boolean: return m_rows->SetBoolean(m_name, value.AsBoolean());
      case automation::VariantType::Date: return m_rows->SetDate(m_name, value.AsDouble());
      case automation::VariantType::String: return m_rows->SetText(m_name, automation::ToText(value));
      default: automation::Raise(3421, "DAO.Field", "Data type conversion error.");
    }
  }

  std::shared_ptr<platform::Recordset> m_rows;
  std::string m_name;
  std::string m_type;
};

class FieldsDouble final : public DispatchDouble {
 public:
  FieldsDouble(std::shared_ptr<CallLog> log, std::shared_ptr<platform::Recordset> rows,
               const ColumnTypes& types)
      : DispatchDouble("Fields", std::move(log)) {
    Get("Item", 1, [this, rows = std::move(rows), types](CallArguments a) {
      const std::string name = automation::ToText(a[0]);
      const auto type = types.find(automation::Lower(name));
      return MakeDouble<FieldDouble>(Log(), rows, name, type == types.end() ? "" : type->second);
    });
  }
};

class RecordsetDouble final : public DispatchDouble {
 public:
  RecordsetDouble(std::shared_ptr<CallLog> log, std::shared_ptr<platform::Recordset> rows, ColumnTypes types)
      : DispatchDouble("Recordset", std::move(log)), m_rows(std::move(rows)), m_types(std::move(types)) {
    Get("EOF", [this] { return automation::Variant::FromBoolean(m_rows->AtEnd()); });
    Get("Fields", [this] { return MakeDouble<FieldsDouble>(Log(), m_rows, m_types); });
    Do("MoveNext", 0, &platform::Recordset::MoveNext);
    Do("AddNew", 0, &platform::Recordset::AddNew);
    Do("Edit", 0, &platform::Recordset::Edit);
    Do("Update", 2, &platform::Recordset::Update);
    Do("Close", 0, &platform::Recordset::Close);
  }

 private:
  void Do(const char* name, unsigned optional, void (platform::Recordset::*method)()) {
    Method(name, 0, optional, [this, method](CallArguments) {
      (m_rows.get()->*method)();
      return Answer();
    });
  }

  std::shared_ptr<platform::Recordset> m_rows;
  ColumnTypes m_types;
};

class DaoDatabaseDouble final : public DispatchDouble {
 public:
  DaoDatabaseDouble(std::shared_ptr<CallLog> log, std::shared_ptr<platform::Database> database,
                    ColumnTypes types)
      : DispatchDouble("Database", std::move(log)),
        m_database(std::move(database)),
        m_types(std::move(types)) {
    Method("OpenRecordset", 1, 4, [this](CallArguments a) {
      return MakeDouble<RecordsetDouble>(
          Log(),
          m_database->OpenRecordset(automation::ToText(a[0]),
                                    static_cast<platform::RecordsetType>(automation::ToLong(a[1]))),
          m_types);
    });
    Method("Execute", 1, 2, [this](CallArguments a) {
      m_database->Execute(automation::ToText(a[0]));
      return Answer();
    });
    Method("Close", 0, [this](CallArguments) {
      m_database->Close();
      return Answer();
    });
  }

 private:
  std::shared_ptr<platform::Database> m_database;
  ColumnTypes m_types;
};

class WorkspaceDouble final : public DispatchDouble {
 public:
  WorkspaceDouble(std::shared_ptr<CallLog> log, std::shared_ptr<platform::Workspace> workspace)
      : DispatchDouble("Workspace", std::move(log)), m_workspace(std::move(workspace)) {
    Method("OpenDatabase", 1, 4, [this](CallArguments a) {
      const std::string path = automation::ToText(a[0]);
      auto database = m_workspace->OpenDatabase(path);
      return MakeDouble<DaoDatabaseDouble>(Log(), std::move(database), ReadColumnTypes(path));
    });
    Do("BeginTrans", 0, &platform::Workspace::BeginTrans);
    Do("CommitTrans", 1, &platform::Workspace::CommitTrans);
    Do("Rollback", 0, &platform::Workspace::Rollback);
  }

 private:
  void Do(const char* name, unsigned optional, void (platform::Workspace::*method)()) {
    Method(name, 0, optional, [this, method](CallArguments) {
      (m_workspace.get()->*method)();
      return Answer();
    });
  }

  std::shared_ptr<platform::Workspace> m_workspace;
};

class WorkspacesDouble final : public DispatchDouble {
 public:
  WorkspacesDouble(std::shared_ptr<CallLog> log, automation::Ref<WorkspaceDouble> first)
      : DispatchDouble("Workspaces", std::move(log)) {
    Get("Item", 1, [first = std::move(first)](CallArguments a) {
      if (automation::ToLong(a[0]) != 0)
        automation::Raise(3265, "DAO.Workspaces", "Item not found in this collection.");
      return first;
    });
  }
};

// DAO.DBEngine.35 and its successors
class DbEngineDouble final : public DispatchDouble {
 public:
  DbEngineDouble(std::shared_ptr<CallLog> log, std::shared_ptr<platform::Workspace> workspace)
      : DispatchDouble("DBEngine", std::move(log)) {
    Get("Workspaces", [this, first = MakeDouble<WorkspaceDouble>(Log(), std::move(workspace))] {
      return MakeDouble<WorkspacesDouble>(Log(), first);
    });
  }
};

}  // namespace hearthmake::doubles
