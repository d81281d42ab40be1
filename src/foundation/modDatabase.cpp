#include "foundation/modDatabase.hpp"

#include "automation/Error.hpp"
#include "automation/Text.hpp"
#include "foundation/Apartment.hpp"

namespace hearthmake::modDatabase {

namespace {

std::shared_ptr<platform::Database> Open() {
  const std::string path = DatabasePath();
  const auto& ports = Ports();
  if (ports.files->FileExists(path)) ports.files->SetAttributes(path, platform::kNormal);
  return ports.workspace->OpenDatabase(path);
}

// Some dozen milliseconds' worth of changes. The fewer transactions, the less often the index pages are
// written that references to any project of a large suite touch.
constexpr int kStepsATransaction = 1000;

}  // namespace

std::string DatabasePath() { return Ports().system->ComponentFolder() + "\\Build.mdb"; }

std::shared_ptr<platform::Database> GetDatabase() {
  auto& slot = Apartment::Current().DatabaseSlot();
  if (!slot) {
    try {
      slot = Open();
    } catch (const automation::Error&) {
      automation::Raise(automation::BuildErrors::beNoDatabase, "DB", "The database is unavailable.");
    }
  }
  return slot;
}

void CloseDatabase() {
  auto& slot = Apartment::Current().DatabaseSlot();
  if (!slot) return;
  const auto database = std::exchange(slot, nullptr);
  database->Close();
}

std::unique_ptr<platform::Recordset> OpenDynaset(const std::string& sql) {
  return GetDatabase()->OpenRecordset(sql, platform::RecordsetType::Dynaset);
}

std::unique_ptr<platform::Recordset> OpenRow(const std::string& selection, std::int32_t id) {
  return OpenDynaset(selection + automation::Decimal(id));
}

void InTransaction(const std::function<void()>& work) {
  platform::Workspace& workspace = *Ports().workspace;
  workspace.BeginTrans();
  try {
    work();
    workspace.CommitTrans();
  } catch (...) {
    workspace.Rollback();
    throw;
  }
}

Batch::Batch() {
  GetDatabase();  // its errors are those that callers know
  m_database = Ports().workspace->OpenDatabase(DatabasePath());
  Ports().workspace->BeginTrans();
  m_isOpen = true;
}

Batch::~Batch() {
  if (!m_isOpen) return;
  platform::Workspace& workspace = *Ports().workspace;
  try {
    workspace.CommitTrans();
  } catch (const automation::Error&) {
    workspace.Rollback();  // the error that brought us here tells more
  }
}

void Batch::Step() {
  if (++m_steps % kStepsATransaction != 0) return;
  Finish();
  Ports().workspace->BeginTrans();
  m_isOpen = true;
}

void Batch::Finish() {
  platform::Workspace& workspace = *Ports().workspace;
  m_isOpen = false;
  try {
    workspace.CommitTrans();
  } catch (...) {
    workspace.Rollback();
    throw;
  }
}

}  // namespace hearthmake::modDatabase
