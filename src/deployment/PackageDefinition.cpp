#include "deployment/PackageDefinition.hpp"

#include <utility>

#include "automation/Error.hpp"
#include "automation/Text.hpp"
#include "build/Build.hpp"
#include "deployment/PackageDefinitions.hpp"
#include "foundation/modDatabase.hpp"

namespace hearthmake {

namespace {

using automation::Decimal;
using automation::Variant;

constexpr const char* kInteractiveUser = "Interactive User";

}  // namespace

Variant YesOrNo(bool value) { return Variant::FromText(value ? "Y" : "N"); }

void TellOfError(Build& build, const std::string& description) {
  try {
    bool cancel = false;
    build.RaiseMTSEvent("Error occured: " + description, cancel);
  } catch (const automation::Error&) {
    // Whoever fails at hearing of the failure has heard of it.
    return;
  }
}

// --- the row ---

void PackageDefinition::SetName(const std::string& value) {
  if (automation::Trim(value).empty())
    automation::Raise(automation::kInvalidValue, m_sources.name, "Name can't be an empty string!");
  Assign(m_record.name, value);
}

void PackageDefinition::AttachTo(PackageDefinitions* parent) {
  m_parent = parent;
  SetOwner(parent);
}

Build& PackageDefinition::ParentBuild() const {
  if (m_parent == nullptr) automation::Raise(automation::RuntimeError::ObjectNotSet, Declaration().Name());
  return m_parent->ParentBuild();
}

void PackageDefinition::LoadFromRow(const platform::Recordset& row) {
  m_record = PackageRecord::FromRow(row);
  LoadOwn(row);
  m_isNew = false;
}

void PackageDefinition::RequireEditMode() const {
  // Every member names CancelEdit as the source: hosts have compared against it.
  if (!m_snapshot) automation::Raise(automation::kEditCycle, m_sources.cancelEdit, "Not in edit mode");
}

void PackageDefinition::BeginEdit() {
  if (m_snapshot) automation::Raise(automation::kEditCycle, m_sources.beginEdit, "Already in edit mode");
  m_snapshot = m_record;
  KeepOwn();
}

void PackageDefinition::ApplyEdit() {
  RequireEditMode();
  const automation::Ref<PackageDefinition> self(this);  // the collection may let go of it below
  // A name that was refused, or that its width left nothing of, is refused here; naming it again is no
  // change.
  const bool isChanged = m_record.dirty;
  SetName(Name());
  if (isChanged || m_isNew || m_isDeleted) Save();
  m_record.dirty = false;
  m_isNew = false;
  m_isDeleted = false;
  m_snapshot.reset();
}

void PackageDefinition::Delete() {
  RequireEditMode();
  m_isDeleted = true;
}

void PackageDefinition::CancelEdit() {
  RequireEditMode();
  m_record = *m_snapshot;
  RestoreOwn();
  m_isDeleted = false;
  m_snapshot.reset();
}

void PackageDefinition::Save() {
  const auto row = modDatabase::OpenRow("SELECT * FROM MTSPackages where id = ", m_record.id);
  if (m_isDeleted) {
    const bool isThere = !row->AtEnd();
    row->Close();
    if (isThere) DeleteRow();
    if (m_parent != nullptr) m_parent->Remove(*this);
    return;
  }
  if (row->AtEnd()) {
    row->AddNew();
  } else {
    row->Edit();
  }
  m_record.Store(*row, ParentBuild().Id());
  StoreOwn(*row);
  const std::int32_t id = row->GetLong("Id");
  row->Update();
  row->Close();
  const std::int32_t previousId = std::exchange(m_record.id, id);
  m_parent->Stored(*this, previousId);
}

void PackageDefinition::DeleteRow() {
  const std::string id = Decimal(m_record.id);
  // In one transaction: no project of another process can come to use the row in between.
  modDatabase::InTransaction([&] {
    const auto count =
        modDatabase::OpenDynaset("SELECT COUNT(MTSPackage)FROM Project WHERE MTSPackage = " + id);
    const bool isUsed = !count->AtEnd() && count->GetLong("Expr1000") != 0;
    count->Close();
    if (isUsed) {
      automation::Raise(automation::kInvalidValue, m_sources.save,
                        "This package is used by one or many projects and can't be deleted!");
    }
    modDatabase::GetDatabase()->Execute("DELETE FROM MTSPackages WHERE id = " + id);
  });
}

// --- the catalog ---

bool PackageDefinition::CreatePackage() {
  // Event handlers may drop or kill the build; it stays for the time of the deployment.
  const automation::Ref<PackageDefinition> self(this);
  const automation::Ref<Build> build(m_parent == nullptr ? nullptr : m_parent->Parent());
  try {
    Deploy();
    return true;
  } catch (const automation::Error& error) {
    if (build) TellOfError(*build, error.Description());
    return false;
  }
}

void PackageDefinition::Tell(const std::string& strInfo) const {
  bool cancel = false;
  ParentBuild().RaiseMTSEvent(strInfo, cancel);
}

void PackageDefinition::InstallProjects(const std::string& where,
                                        const std::function<void(Project&)>& install) const {
  const automation::Ref<Projects> projects(&ParentBuild().Projects());
  for (const auto& project : projects->All()) {
    ParentBuild();  // one that was killed meanwhile gets no further
    const bool isTakenOut = project->ParentOrNull() != projects.Get();  // by an event handler
    // A definition that was never stored has the id of none.
    if (isTakenOut || Id() == 0 || project->MtsPackageId() != Id()) continue;
    Tell("Adding component " + project->Name() + where);
    install(*project);
  }
}

std::int32_t PackageDefinition::PositionIn(platform::CatalogCollection& collection) const {
  const std::int32_t count = collection.Count();
  for (std::int32_t position = 1; position <= count; ++position) {
    if (collection.Item(position - 1)->Name() == Name()) return position;
  }
  return 0;
}

void PackageDefinition::SetCommonValues(platform::CatalogObject& object) const {
  object.SetValue("Name", Variant::FromText(Name()));
  object.SetValue("Description", Variant::FromText(Description()));
  object.SetValue("Deleteable", YesOrNo(!DisableDelete()));
  object.SetValue("Changeable", YesOrNo(!DisableChanges()));
  object.SetValue("ShutdownAfter", Variant::FromLong(Shutdowntime()));
  object.SetValue("RunForever", YesOrNo(LeaveRunningIdle()));
}

void PackageDefinition::SetIdentity(platform::CatalogObject& object) const {
  const bool isInteractive = User().empty();
  object.SetValue("Identity", Variant::FromText(isInteractive ? kInteractiveUser : User()));
  object.SetValue("Password", Variant::FromText(isInteractive ? std::string() : Password()));
}

}  // namespace hearthmake
