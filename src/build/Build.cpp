#include "build/Build.hpp"

#include <optional>

#include "automation/Error.hpp"
#include "automation/Text.hpp"
#include "build/Builds.hpp"
#include "foundation/modDatabase.hpp"
#include "foundation/modExecute.hpp"

namespace hearthmake {

namespace {

using automation::Decimal;

template <class T>
void Remove(T& member) {
  member.BeginEdit();
  member.Delete();
  member.ApplyEdit();
}

// Gives the owner's side of a member up.
template <class T>
void Drop(automation::Held<T>& member) {
  if (!member) return;
  member->ReleaseMembers();
  member->SetOwner(nullptr);
  member = {};
}

// A load that fails leaves none behind.
template <class T>
T& LoadAtFirstUse(automation::Held<T>& member, Build& build) {
  if (!member) {
    const auto collection = automation::Make<T>(build);
    collection->Load();
    member = automation::Held<T>(collection);
  }
  return *member;
}

template <class T>
T& MakeAtFirstUse(automation::Held<T>& member, Build& build) {
  if (!member) member = automation::Held<T>(new T(build));
  return *member;
}

}  // namespace

Build::~Build() { DropMembers(); }

void Build::DropMembers() {
  m_failedProject = {};
  Drop(m_projects);
  Drop(m_ssProjects);
  Drop(m_mtsPackages);
  Drop(m_comApplications);
  Drop(m_scripts);
}

void Build::SetName(const std::string& value) {
  if (automation::Trim(value).empty())
    automation::Raise(automation::kInvalidValue, "Build.Name", "Invalid name");
  m_record.name = value;
  m_record.dirty = true;
}

void Build::SetStartDllBaseAddress(std::int32_t value) {
  m_record.startDllBaseAddress = value;
  m_record.dirty = true;
}

hearthmake::Projects& Build::Projects() { return LoadAtFirstUse(m_projects, *this); }
hearthmake::SSProjects& Build::SSProjects() { return MakeAtFirstUse(m_ssProjects, *this); }
hearthmake::MTSPackages& Build::MTSPackages() { return LoadAtFirstUse(m_mtsPackages, *this); }
hearthmake::COMApplications& Build::COMApplications() { return LoadAtFirstUse(m_comApplications, *this); }
hearthmake::Scripts& Build::Scripts() { return LoadAtFirstUse(m_scripts, *this); }

void Build::Load(std::int32_t lngBuildId) {
  const auto row = modDatabase::OpenRow("SELECT * FROM Build WHERE id = ", lngBuildId);
  if (row->AtEnd()) {
    row->Close();
    automation::Raise(automation::BuildErrors::be_BuildNotFound, "Build.Load", "Build not found!");
  }
  const std::int32_t id = row->GetLong("Id");
  if (id != m_id) DropMembers();  // those of another build
  m_id = id;
  m_record.name = row->GetText("Name");
  m_record.startDllBaseAddress = row->GetLong("StartDllBaseAddress");
  m_record.dirty = false;
  row->Close();
}

void Build::LoadLight(std::int32_t id, const std::string& name, Builds& parent) {
  m_id = id;
  m_record.name = name;
  SetOwner(&parent);
}

void Build::RequireEditMode() const {
  if (!m_snapshot) automation::Raise(automation::kEditCycle, "Project.CancelEdit", "Not in edit mode");
}

void Build::BeginEdit() {
  if (m_snapshot) automation::Raise(automation::kEditCycle, "Project.BeginEdit", "Already in edit mode");
  m_snapshot = std::make_unique<Record>(m_record);
}

void Build::ApplyEdit() {
  RequireEditMode();
  if (m_isDeleted) {
    DeleteBuild();
  } else {
    Save();
  }
  m_record.dirty = false;
  m_isDeleted = false;
  m_snapshot.reset();
}

void Build::CancelEdit() {
  RequireEditMode();
  m_record = *m_snapshot;
  m_isDeleted = false;
  m_snapshot.reset();
}

void Build::Delete() { m_isDeleted = true; }

void Build::Save() {
  const auto row = modDatabase::OpenRow("SELECT * FROM BUild WHERE id = ", m_id);
  if (row->AtEnd()) {
    row->AddNew();
  } else {
    row->Edit();
  }
  row->SetText("Name", Name());
  row->SetLong("StartDllBaseAddress", m_record.startDllBaseAddress);
  const std::int32_t id = row->GetLong("Id");
  row->Update();
  row->Close();
  m_id = id;
}

void Build::DeleteBuild() {
  std::optional<std::string> reason;
  try {
    Projects();
    modDatabase::InTransaction([&] { DeleteMembers(); });
  } catch (const automation::Error& error) {
    reason = error.Description();
  }
  if (reason) {
    // The rows are back; what was taken out of the lists is read anew.
    DropMembers();
    automation::Raise(automation::BuildErrors::beBuildCanNotDelete, "Build.DeleteBuild",
                      "Error occured when deleteing build! " + *reason);
  }
  modDatabase::CloseDatabase();
  DropMembers();
}

void Build::DeleteMembers() {
  while (Projects().Count() > 0) Remove(*Projects().Item(automation::Variant::FromLong(1)));
  MTSPackages().Load();  // rows that came through COMApplications since
  while (MTSPackages().Count() > 0) Remove(*MTSPackages().Item(automation::Variant::FromLong(1)));
  const auto database = modDatabase::GetDatabase();
  database->Execute("DELETE FROM Scripts WHERE BuildID =" + Decimal(m_id));
  database->Execute("DELETE FROM Build WHERE id = " + Decimal(m_id));
}

void Build::Kill() {
  const automation::Ref<Build> self(this);
  DropMembers();
  if (m_report) m_report->Kill();
  m_report.reset();
  SetOwner(nullptr);
}

void Build::CmdExecute(const std::string& strCommand) { modExecute::CmdExec(strCommand); }

}  // namespace hearthmake
