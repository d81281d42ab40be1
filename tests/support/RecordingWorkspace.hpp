#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/Database.hpp"

namespace hearthmake::support {

// A workspace over a real one, which writes down what is asked of the databases: SQL texts, and the columns
// of each row in the order in which they are assigned.
class RecordingWorkspace final : public platform::Workspace {
 public:
  using Lines = std::shared_ptr<std::vector<std::string>>;

  explicit RecordingWorkspace(std::shared_ptr<platform::Workspace> real) : m_real(std::move(real)) {}

  std::shared_ptr<platform::Database> OpenDatabase(const std::string& path) override {
    return std::make_shared<Database>(m_real->OpenDatabase(path), lines);
  }
  void BeginTrans() override { m_real->BeginTrans(); }
  void CommitTrans() override { m_real->CommitTrans(); }
  void Rollback() override { m_real->Rollback(); }

  Lines lines = std::make_shared<std::vector<std::string>>();

 private:
  class Recordset final : public platform::Recordset {
   public:
    Recordset(std::unique_ptr<platform::Recordset> real, Lines lines)
        : m_real(std::move(real)), m_lines(std::move(lines)) {}

    bool AtEnd() const override { return m_real->AtEnd(); }
    void MoveNext() override { m_real->MoveNext(); }
    void AddNew() override {
      m_lines->push_back("AddNew");
      m_real->AddNew();
    }
    void Edit() override {
      m_lines->push_back("Edit");
      m_real->Edit();
    }
    void Update() override {
      m_lines->push_back("Update");
      m_real->Update();
    }
    void Close() override { m_real->Close(); }

    bool IsNull(std::string_view column) const override { return m_real->IsNull(column); }
    std::string GetText(std::string_view column) const override { return m_real->GetText(column); }
    std::int32_t GetLong(std::string_view column) const override { return m_real->GetLong(column); }
    bool GetBoolean(std::string_view column) const override { return m_real->GetBoolean(column); }
    double GetDate(std::string_view column) const override { return m_real->GetDate(column); }

    void SetNull(std::string_view column) override { m_real->SetNull(Noted(column)); }
    void SetText(std::string_view column, std::string_view value) override {
      m_real->SetText(Noted(column), value);
    }
    void SetLong(std::string_view column, std::int32_t value) override {
      m_real->SetLong(Noted(column), value);
    }
    void SetBoolean(std::string_view column, bool value) override {
      m_real->SetBoolean(Noted(column), value);
    }
    void SetDate(std::string_view column, double value) override { m_real->SetDate(Noted(column), value); }

   private:
    std::string_view Noted(std::string_view column) {
      m_lines->emplace_back(column);
      return column;
    }

    std::unique_ptr<platform::Recordset> m_real;
    Lines m_lines;
  };

  class Database final : public platform::Database {
   public:
    Database(std::shared_ptr<platform::Database> real, Lines lines)
        : m_real(std::move(real)), m_lines(std::move(lines)) {}

    std::unique_ptr<platform::Recordset> OpenRecordset(const std::string& sql,
                                                       platform::RecordsetType type) override {
      m_lines->push_back(sql);
      return std::make_unique<Recordset>(m_real->OpenRecordset(sql, type), m_lines);
    }
    void Execute(const std::string& sql) override {
      m_lines->push_back(sql);
      m_real->Execute(sql);
    }
    void Close() override { m_real->Close(); }

   private:
    std::shared_ptr<platform::Database> m_real;
    Lines m_lines;
  };

  std::shared_ptr<platform::Workspace> m_real;
};

}  // namespace hearthmake::support
