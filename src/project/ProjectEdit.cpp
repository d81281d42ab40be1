// Project: its row in the database and its edit cycle.

#include "automation/Error.hpp"
#include "automation/Text.hpp"
#include "build/Build.hpp"
#include "build/Projects.hpp"
#include "foundation/modDatabase.hpp"
#include "project/Project.hpp"

namespace hearthmake {

using automation::Decimal;

void Project::LoadFromRow(const platform::Recordset& row) {
  m_vbProject.Load(row);
  m_record.id = row.GetLong("Id");
  m_record.copyPath = row.GetText("CopyPath");
  m_record.compile = row.GetBoolean("Compile");
  m_record.mtsPackage = row.GetLong("MTSPackage");
  m_record.preserveBinary = row.GetBoolean("PreserveBinary");
  m_record.checkInVBP = row.GetBoolean("CheckInVBP");
  m_record.checkInBinary = row.GetBoolean("CheckInBinary");
  if (!row.IsNull("LastCompiled")) m_record.lastCompiled = row.GetDate("LastCompiled");
  m_file.SetFile(row.GetText("ProjectPath"));
  m_binaryPath.clear();
  m_isNew = false;
  m_isDirty = false;
}

void Project::RequireEditMode() const {
  // Every member names CancelEdit as the source: hosts have compared against it.
  if (!m_snapshot) automation::Raise(automation::kEditCycle, "Project.CancelEdit", "Not in edit mode");
}

void Project::BeginEdit() {
  if (m_snapshot) automation::Raise(automation::kEditCycle, "Project.BeginEdit", "Already in edit mode");
  m_references->BeginEdit();
  m_vbProject.BeginEdit();
  m_snapshot = std::make_unique<Snapshot>(Snapshot{m_record, m_file.PathName()});
}

void Project::ApplyEdit() {
  RequireEditMode();
  const automation::Ref<Project> self(this);  // the collection may let go of it below
  if (m_isDeleted) {
    DeleteRows();
    if (m_parent != nullptr) m_parent->Remove(*this);
    m_references->ReleaseMembers();
    m_isDeleted = false;
  } else {
    Save();
  }
  m_vbProject.ApplyEdit();
  m_snapshot.reset();
  m_isDirty = false;
  m_isNew = false;
}

void Project::Delete() {
  RequireEditMode();
  m_isDeleted = true;
}

void Project::CancelEdit() {
  RequireEditMode();
  const std::string name = Name();
  m_record = m_snapshot->record;
  m_file.SetFile(m_snapshot->path);
  m_snapshot.reset();
  m_isDeleted = false;
  m_vbProject.CancelEdit();
  m_references->CancelEdit();
  FilesChanged();
  if (m_parent != nullptr && Name() != name) m_parent->Renamed(*this);
}

void Project::Save() {
  if (!m_vbProject.IsDirty() && !m_references->IsDirty() && !m_isDirty && !m_isNew) {
    m_references->ApplyEdit();  // nothing to store, but it leaves edit mode with its project
    return;
  }
  const std::int32_t previousId = m_record.id;
  try {
    // The row and the rows of its references are stored together or not at all.
    modDatabase::InTransaction([&] {
      SaveRow();
      m_references->StoreChanges();
    });
  } catch (...) {
    m_record.id = previousId;
    throw;
  }
  m_references->EndEdit();
}

void Project::SaveRow() {
  if (!m_vbProject.IsDirty() && !m_isDirty && !m_isNew) return;
  const auto row = modDatabase::OpenRow("SELECT * FROM Project WHERE ID = ", m_record.id);
  if (row->AtEnd()) {
    row->AddNew();
  } else {
    row->Edit();
  }
  if (m_vbProject.IsDirty()) m_vbProject.Save(*row);
  row->SetText("ProjectPath", ProjectPath());
  row->SetLong("idBuild", ParentBuild().Id());
  row->SetText("CopyPath", CopyPath());
  row->SetBoolean("Compile", m_record.compile);
  row->SetLong("MTSPackage", m_record.mtsPackage);
  row->SetBoolean("PreserveBinary", m_record.preserveBinary);
  if (m_record.lastCompiled) row->SetDate("LastCompiled", *m_record.lastCompiled);
  row->SetBoolean("CheckInBinary", m_record.checkInBinary);
  row->SetBoolean("CheckInVBP", m_record.checkInVBP);
  m_record.id = row->GetLong("Id");
  row->Update();
  row->Close();
}

void Project::DeleteRows() {
  constexpr const char* kSource = "Project.Delete";
  const std::string id = Decimal(m_record.id);
  try {
    modDatabase::InTransaction([&] {
      const auto count =
          modDatabase::OpenDynaset("SELECT COUNT(*) FROM References WHERE idReferenced = " + id);
      const bool isReferenced = !count->AtEnd() && count->GetLong("Expr1000") != 0;
      count->Close();
      if (isReferenced) {
        automation::Raise(automation::BuildErrors::beProjectIsReferenced, kSource,
                          "Project is referenced by other projects");
      }
      const auto database = modDatabase::GetDatabase();
      database->Execute("DELETE FROM ExternalReferences WHERE ProjectID = " + id);
      database->Execute("DELETE FROM Project WHERE id = " + id);
      database->Execute("DELETE FROM References WHERE idReferencing = " + id);
    });
  } catch (const automation::Error& error) {
    if (error.Number() == static_cast<std::int32_t>(automation::BuildErrors::beProjectIsReferenced)) throw;
    automation::Raise(automation::BuildErrors::beCanNotDelete, kSource, "Project delete failed");
  }
}

}  // namespace hearthmake
