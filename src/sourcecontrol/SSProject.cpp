#include "sourcecontrol/SSProject.hpp"

#include <limits>

#include "automation/Error.hpp"
#include "automation/Text.hpp"
#include "build/Build.hpp"
#include "foundation/modDatabase.hpp"
#include "sourcecontrol/SSProjects.hpp"
#include "sourcecontrol/SSSession.hpp"

namespace hearthmake {

namespace {

using platform::SourceFlags::kReplaceYes;

// Added, not set: a host that has the flag among its own gets the sum, as it always has.
std::int32_t GetFlags(std::int32_t flags) {
  if (flags > std::numeric_limits<std::int32_t>::max() - kReplaceYes)
    automation::Raise(automation::RuntimeError::Overflow, "SSProject.GetLatest");
  return flags + kReplaceYes;
}

}  // namespace

SSProject::SSProject(SSProjects& parent) : m_parent(&parent) { SetOwner(&parent); }

void SSProject::AttachTo(SSProjects* parent) {
  m_parent = parent;
  SetOwner(parent);
}

SSProjects& SSProject::Parent() const {
  if (m_parent == nullptr) automation::Raise(automation::RuntimeError::ObjectNotSet, "SSProject");
  return *m_parent;
}

void SSProject::LoadFromRow(const platform::Recordset& row) {
  m_id = row.GetLong("Id");
  m_record.database = row.GetText("Database");
  m_record.srcSafeIni = row.GetText("SrcSafeIni");
  m_record.user = row.GetText("User");
  m_record.password = row.GetText("Password");
  m_record.project = row.GetText("Project");
  m_record.flags = row.GetLong("Flags");
  m_record.workingFolder = row.GetText("WorkingFolder");
  m_record.dirty = false;
  m_isNew = false;
}

void SSProject::RequireEditMode() const {
  // Every member names CancelEdit as the source: hosts have compared against it.
  if (!m_snapshot) automation::Raise(automation::kEditCycle, "SSProject.CancelEdit", "Not in edit mode");
}

void SSProject::BeginEdit() {
  if (m_snapshot) automation::Raise(automation::kEditCycle, "SSProject.BeginEdit", "Already in edit mode");
  m_snapshot = m_record;
}

void SSProject::ApplyEdit() {
  RequireEditMode();
  const automation::Ref<SSProject> self(this);  // the collection may let go of it below
  if (m_isDeleted) {
    modDatabase::GetDatabase()->Execute("DELETE FROM SSProjects WHERE id = " + automation::Decimal(m_id));
    if (m_parent != nullptr) m_parent->Remove(*this);
  } else if (m_isNew || m_record.dirty) {
    Save();
    if (m_isNew) Parent().Add(*this);
    m_isNew = false;
  }
  m_record.dirty = false;
  m_isDeleted = false;
  m_snapshot.reset();
}

void SSProject::Delete() {
  RequireEditMode();
  m_isDeleted = true;
}

void SSProject::CancelEdit() {
  RequireEditMode();
  m_record = *m_snapshot;
  m_isDeleted = false;
  m_snapshot.reset();
}

void SSProject::Save() {
  const std::int32_t idBuild = Parent().ParentBuild().Id();
  const auto row = modDatabase::OpenRow("SELECT * FROM SSProjects where id = ", m_id);
  if (row->AtEnd()) {
    row->AddNew();
  } else {
    row->Edit();
  }
  row->SetText("Database", Database());
  row->SetText("SrcSafeIni", SrcSafeIni());
  row->SetText("User", User());
  row->SetText("Password", Password());
  row->SetText("Project", Project());
  row->SetLong("Flags", Flags());
  row->SetText("WorkingFolder", WorkingFolder());
  row->SetLong("idBuild", idBuild);
  const std::int32_t id = row->GetLong("Id");
  row->Update();
  row->Close();
  m_id = id;
}

std::unique_ptr<platform::VSSItem> SSProject::OpenItem(SSSession& session) const {
  return session.For(*this).VSSItem(Project(), false);
}

void SSProject::GetFiles(platform::VSSItem& item) const { item.Get(WorkingFolder(), GetFlags(Flags())); }

bool SSProject::GetLatest() {
  SSSession session;
  GetFiles(*OpenItem(session));
  return true;
}

bool SSProject::GetFromLabel(const std::string& strLabel) {
  SSSession session;
  const auto item = OpenItem(session);
  const auto versions = item->Versions();
  for (auto version = versions->Next(); version; version = versions->Next()) {
    if (version->Label() != strLabel) continue;
    GetFiles(*version->VSSItem());
    return true;
  }
  return false;
}

bool SSProject::Label(const std::string& strLabel, const std::string& strComment) {
  SSSession session;
  OpenItem(session)->Label(strLabel, strComment);
  return true;
}

std::vector<platform::VSSCheckout> SSProject::Checkouts() const {
  SSSession session;
  return OpenItem(session)->Checkouts();
}

}  // namespace hearthmake
