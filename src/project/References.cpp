#include "project/References.hpp"

#include <algorithm>
#include <cmath>
#include <limits>

#include "automation/Error.hpp"
#include "automation/Text.hpp"
#include "build/Projects.hpp"
#include "foundation/Apartment.hpp"
#include "foundation/Paths.hpp"
#include "foundation/RegistryText.hpp"
#include "foundation/modDatabase.hpp"
#include "project/Project.hpp"

namespace hearthmake {

namespace {

using automation::Decimal;
using automation::Raise;

constexpr std::size_t kPathWidth = 255;
constexpr std::int32_t kControlFlag = 2;  // LIBFLAG_FCONTROL

std::vector<std::string_view> SplitFields(std::string_view row) {
  std::vector<std::string_view> fields;
  std::size_t start = 0;
  for (std::size_t hit = row.find('#'); hit != std::string_view::npos; hit = row.find('#', start)) {
    fields.push_back(row.substr(start, hit - start));
    start = hit + 1;
  }
  fields.push_back(row.substr(start));
  return fields;
}

// The length taken is the position of the "}", not the distance from the "{": so the text up to the
// end of the field comes along.
std::string_view GuidOf(std::string_view field) {
  const std::size_t open = field.find('{');
  const std::size_t close = field.find('}', open);
  return field.substr(open, close == std::string_view::npos ? 0 : close + 1);
}

std::string_view ControlFileOf(std::string_view field) {
  const std::size_t semicolon = field.rfind(';');
  return automation::Trim(semicolon == std::string_view::npos ? field : field.substr(semicolon + 1));
}

void FillFromRow(Reference& reference, const std::vector<std::string_view>& fields) {
  reference.SetGUID(std::string(GuidOf(fields[0])));
  reference.SetBinaryVersion(std::string(fields[1]));
  if (automation::EqualsIgnoreCaseAscii(fields[0].substr(0, 9), "reference")) {
    if (fields.size() < 4) {
      Raise(automation::RuntimeError::SubscriptOutOfRange, "References.AddExternalReference");
    }
    reference.SetPath(std::string(fields[3]));
    reference.SetReferenceType(ReferenceTypes::RT_REFERENCE);
  } else {
    reference.SetPath(std::string(ControlFileOf(fields[2])));
    reference.SetReferenceType(ReferenceTypes::RT_OBJECT);
  }
  if (fields.size() > 4) reference.SetDescription(std::string(fields[4]));
}

// %CommonFiles%\x.dll: the variable's name is what stands between the first and the last "%".
std::string ExpandVariable(const std::string& strFileName) {
  const std::size_t last = strFileName.rfind('%');
  if (!strFileName.starts_with('%') || last == 0) return strFileName;
  const std::string name = strFileName.substr(1, last - 1);
  const std::string value = Ports().system->EnvironmentVariable(name).value_or("");
  return automation::ReplaceAll(strFileName, "%" + name + "%", value);
}

std::string VersionText(const platform::TypeLibInfo& library) {
  return automation::Hex(library.majorVersion) + "." + automation::Hex(library.minorVersion);
}

bool IsRegisteredControl(const Reference& reference) {
  std::string flags;
  GetRegistryValue(platform::RegistryRoot::ClassesRoot,
                   "Typelib\\" + reference.GUID() + "\\" + reference.BinaryVersion() + "\\FLAGS", "", flags);
  const double number = automation::Val(flags);
  const bool isLong = std::abs(number) <= std::numeric_limits<std::int32_t>::max();
  return isLong && (static_cast<std::int32_t>(number) & kControlFlag) == kControlFlag;
}

std::string StemKey(std::string_view path) { return automation::Lower(FileStem(path)); }

}  // namespace

References::References(Project& project) : m_project(&project) { SetOwner(&project); }

References::~References() { ReleaseMembers(); }

void References::ReleaseMembers() {
  m_project = nullptr;
  for (const auto& reference : m_items.Snapshot()) reference->SetOwner(nullptr);
  ClearItems();
  m_snapshot.clear();
  m_editing = false;
  m_dirty = false;
}

Project& References::Owner() const {
  if (m_project == nullptr) Raise(automation::RuntimeError::ObjectNotSet, "References");
  return *m_project;
}

automation::Ref<automation::Enumerator> References::NewEnum() {
  return automation::Make<CollectionEnumerator<Reference>>(m_items.Snapshot());
}

automation::Variant References::Count() const {
  return automation::Variant::FromLong(static_cast<std::int32_t>(m_items.Count()));
}

automation::Ref<Reference> References::Item(const automation::Variant& vIndex) const {
  return automation::Ref<Reference>(&m_items.Item(vIndex));
}

bool References::IsProjectReferencingExternal(const std::string& GUID) const {
  for (std::size_t i = 0; i < m_items.Count(); ++i) {
    if (m_items.At(i).IsExternal() && m_items.At(i).GUID() == GUID) return true;
  }
  return false;
}

bool References::IsProjectReferencing(std::int32_t idProject) const {
  return std::find(m_referenced.begin(), m_referenced.end(), idProject) != m_referenced.end();
}

void References::AddInternalReference(Project& objProject) {
  Project& owner = Owner();
  if (!objProject.ISActiveX()) {
    Raise(automation::kInvalidValue, "ReferencedProjects.AddInternalReference",
          "Project is not an ActiveX project");
  }
  if (objProject.Id() == owner.Id()) {
    Raise(automation::BuildErrors::beInvalidReference, "clReference.AddInternalReference",
          "Project can't reference it self");
  }
  if (objProject.ReferenceList().IsProjectReferencing(owner.Id())) {
    Raise(automation::BuildErrors::beInvalidReference, "clReference.AddInternalReference",
          "Cross reference: " + objProject.Name() + " references " + owner.Name());
  }
  if (IsProjectReferencing(objProject.Id())) {
    Raise(automation::kInvalidValue, "References.AddInternalReference", "Reference already exists");
  }
  RemoveExternalTwin(objProject);
  const auto reference = automation::Make<Reference>();
  reference->SetReferencedProject(objProject.Id());
  reference->SetReferenceType(ReferenceTypes::RT_UNDEFINED);
  Insert(*reference);
  m_dirty = true;
}

void References::RemoveExternalTwin(Project& objProject) {
  const std::string stem = StemKey(objProject.BinaryPath());
  for (std::size_t i = 0; i < m_items.Count(); ++i) {
    const Reference& reference = m_items.At(i);
    // A row held raw names no library that the project could replace.
    if (!reference.IsExternal() || reference.GUID().empty() || StemKey(reference.Path()) != stem) continue;
    m_items.RemoveKey(reference.Id());  // an external one
    return;
  }
}

automation::Ref<Reference> References::AddExternalReference(const std::string& strReferenceString,
                                                            const std::string& strFileName) {
  const auto reference = automation::Make<Reference>();
  if (strReferenceString.empty()) {
    AddLibrary(ExpandVariable(strFileName), *reference);
  } else {
    const auto fields = SplitFields(strReferenceString);
    if (fields.size() < 3) {
      Raise(automation::BuildErrors::be_InvalidReferenceString, "References.AddExternalReference",
            "Invalid Reference string");
    }
    if (fields[0].find('{') == std::string_view::npos) return nullptr;
    FillFromRow(*reference, fields);
  }
  reference->MarkExternal();
  Insert(*reference);
  m_dirty = true;
  return reference;
}

void References::AddLibrary(const std::string& strFileName, Reference& reference) {
  ValidateReference(strFileName);
  const platform::TypeLibInfo library = Ports().typeLibs->Read(Owner().ResolveLibrary(strFileName));
  reference.SetBinaryVersion(VersionText(library));
  reference.SetDescription(library.helpString);
  reference.SetGUID(library.guid);
  reference.SetPath(strFileName);
  reference.SetReferenceType(IsRegisteredControl(reference) ? ReferenceTypes::RT_OBJECT
                                                            : ReferenceTypes::RT_REFERENCE);
}

bool References::ValidateReference(const std::string& strPath) {
  platform::TypeLibInfo library;
  try {
    library = Ports().typeLibs->Read(Owner().ResolveLibrary(strPath));
  } catch (const automation::Error&) {
    Raise(automation::kInvalidValue, "References.Validate", "This is not a valid typelibrary!");
  }
  const Project* project = Owner().ParentProjects().FindByLibrary(library.guid);
  if (project != nullptr) {
    Raise(automation::kInvalidValue, "",
          "You should use the project " + project->Name() + " which is part of this build instead!");
  }
  return true;
}

void References::Insert(Reference& reference) {
  if (m_counter == std::numeric_limits<std::int32_t>::max()) {
    Raise(automation::RuntimeError::Overflow, "References");
  }
  reference.SetId(++m_counter);
  reference.SetOwner(this);
  AddItem(reference);
}

void References::AddItem(Reference& reference) {
  m_items.Add(reference, reference.Id());
  if (!reference.IsExternal()) m_referenced.push_back(reference.ReferencedProject());
}

void References::ClearItems() {
  m_items.Clear();
  m_referenced.clear();
}

void References::Remove(const automation::Variant& index) {
  if (!m_editing) Raise(automation::kEditCycle, "Project.CancelEdit", "Not in edit mode");
  const automation::Ref<Reference> removed = Item(index);
  m_items.Remove(index);
  if (!removed->IsExternal()) {
    m_referenced.erase(std::find(m_referenced.begin(), m_referenced.end(), removed->ReferencedProject()));
  }
  m_dirty = true;
}

void References::Load(std::int32_t idProject) {
  // Two blanks after WHERE: the statement has always been sent so.
  const auto internals =
      modDatabase::OpenRow("SELECT idReferenced FROM References WHERE  idReferencing = ", idProject);
  for (; !internals->AtEnd(); internals->MoveNext()) {
    const auto reference = automation::Make<Reference>();
    reference->SetReferencedProject(internals->GetLong("idreferenced"));
    reference->SetReferenceType(ReferenceTypes::RT_UNDEFINED);
    Insert(*reference);
  }
  internals->Close();
  const auto externals = modDatabase::OpenRow("SELECT * FROM ExternalReferences WHERE ProjectId=", idProject);
  for (; !externals->AtEnd(); externals->MoveNext()) {
    const auto reference = automation::Make<Reference>();
    reference->LoadExternal(*externals);
    Insert(*reference);
  }
  externals->Close();
}

void References::BeginEdit() {
  if (m_editing) Raise(automation::kEditCycle, "Project.BeginEdit", "Already in edit mode");
  m_editing = true;
  m_snapshot.clear();
  for (std::size_t i = 0; i < m_items.Count(); ++i) m_snapshot.emplace_back(&m_items.At(i));
}

void References::ApplyEdit() {
  StoreChanges();
  EndEdit();
}

void References::StoreChanges() {
  // The source names CancelEdit on purpose.
  if (!m_editing) Raise(automation::kEditCycle, "Project.CancelEdit", "Not in edit mode");
  if (m_dirty) SaveReferences();
}

void References::EndEdit() {
  m_dirty = false;
  m_editing = false;
  m_snapshot.clear();
}

void References::CancelEdit() {
  if (!m_editing) Raise(automation::kEditCycle, "Project.CancelEdit", "Not in edit mode");
  m_editing = false;
  ClearItems();
  for (const auto& reference : m_snapshot) AddItem(*reference);
  m_snapshot.clear();
  m_dirty = false;
}

void References::SaveReferences() {
  try {
    modDatabase::InTransaction([&] {
      const std::int32_t idOwner = Owner().Id();
      const auto database = modDatabase::GetDatabase();
      database->Execute("DELETE FROM References WHERE idREferencing = " + Decimal(idOwner));
      database->Execute("DELETE FROM ExternalReferences WHERE ProjectId = " + Decimal(idOwner));
      for (std::size_t i = 0; i < m_items.Count(); ++i) InsertRow(m_items.At(i), idOwner);
    });
  } catch (const automation::Error&) {
    Raise(automation::kInvalidValue, "References.SaveReferences", "Save failed!");
  }
}

void References::InsertRow(const Reference& reference, std::int32_t idOwner) {
  const auto database = modDatabase::GetDatabase();
  if (!reference.IsExternal()) {
    database->Execute("INSERT INTO References(idReferencing, idreferenced) VALUES (" + Decimal(idOwner) +
                      "," + Decimal(reference.ReferencedProject()) + ")");
    return;
  }
  // The texts stand between apostrophes as they are: one that holds an apostrophe makes the save fail.
  database->Execute(
      "INSERT INTO ExternalReferences(TypeLibGUID, BinaryVersion,Description,Path,ProjectID, Type) VALUES "
      "('" +
      reference.GUID() + "','" + reference.BinaryVersion() + "','" + reference.Description() + "', '" +
      reference.Path() + "', " + Decimal(idOwner) + ", '" + reference.TypeCode() + "')");
}

void References::Detect(const std::vector<std::string>& rows) {
  std::vector<automation::Held<Reference>> previous;
  for (std::size_t i = 0; i < m_items.Count(); ++i) previous.emplace_back(&m_items.At(i));
  const bool wasDirty = m_dirty;
  ClearItems();
  try {
    for (const std::string& row : rows) DetectRow(row);
  } catch (const automation::Error&) {
    m_dirty = wasDirty;
    ClearItems();
    for (const auto& reference : previous) AddItem(*reference);
    throw;
  }
  m_dirty = true;
}

void References::DetectRow(const std::string& row) {
  Projects* projects = Owner().ParentOrNull();
  Project* project = projects == nullptr ? nullptr : projects->FindByReferenceRow(row, Owner());
  if (project != nullptr) {
    try {
      AddInternalReference(*project);
      return;
    } catch (const automation::Error&) {
      // Refused (a cross reference, a second row, no ActiveX project): then it stays what the row says.
      project = nullptr;
    }
  }
  if (!AddParsed(row)) AddRaw(row);
}

bool References::AddParsed(const std::string& row) {
  // Without a whole GUID the row could not be written again from its parts.
  const std::size_t open = row.find('{');
  if (open == std::string::npos || row.find('}', open) > row.find('#')) return false;
  try {
    return AddExternalReference(row, "").Get() != nullptr;
  } catch (const automation::Error&) {
    return false;  // too few fields
  }
}

void References::AddRaw(const std::string& row) {
  const std::size_t equals = row.find('=');
  const std::string_view text = std::string_view(row).substr(equals + 1);
  if (automation::Left(text, kPathWidth).size() < text.size()) {
    Raise(automation::BuildErrors::be_InvalidReferenceString, "References.AddExternalReference",
          "Invalid Reference string, longer than 255 characters: " + row);
  }
  const auto reference = automation::Make<Reference>();
  reference->SetPath(std::string(text));
  reference->SetReferenceType(row.starts_with("Object") ? ReferenceTypes::RT_OBJECT
                                                        : ReferenceTypes::RT_REFERENCE);
  reference->MarkExternal();
  Insert(*reference);
}

}  // namespace hearthmake
