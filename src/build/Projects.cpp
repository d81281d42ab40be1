#include "build/Projects.hpp"

#include <unordered_map>

#include "automation/Error.hpp"
#include "automation/Text.hpp"
#include "build/Build.hpp"
#include "build/CompileOrder.hpp"
#include "foundation/Apartment.hpp"
#include "foundation/Paths.hpp"
#include "foundation/modDatabase.hpp"
#include "project/ProjectGroup.hpp"

namespace hearthmake {

namespace {

using automation::Decimal;

bool IsAlreadyInBuild(const automation::Error& error) {
  return error.Number() == static_cast<std::int32_t>(automation::BuildErrors::beProjectAlreadyInBuild);
}

std::string_view FieldOf(std::string_view text, std::size_t index) {
  for (; index > 0; --index) {
    const std::size_t hash = text.find('#');
    if (hash == std::string_view::npos) return {};
    text.remove_prefix(hash + 1);
  }
  return text.substr(0, text.find('#'));
}

}  // namespace

Projects::Projects(hearthmake::Build& build) : m_build(&build) { SetOwner(&build); }

Projects::~Projects() { ReleaseMembers(); }

void Projects::ReleaseMembers() {
  m_build = nullptr;
  m_files.reset();
  for (const auto& project : m_byId.Snapshot()) {
    project->AttachTo(nullptr);
  }
  m_byName.Clear();
  m_byId.Clear();
}

void Projects::Load() {
  auto view = modDatabase::GetDatabase()->HoldView();  // two look-ups a project
  const auto rows = modDatabase::OpenRow("SELECT * FROM Project WHERE idBuild = ", m_build->Id());
  for (; !rows->AtEnd(); rows->MoveNext()) {
    const auto project = automation::Make<Project>();
    project->LoadFromRow(*rows);
    project->ReferenceList().Load(project->Id());
    Insert(*project);
  }
  rows->Close();
  view.reset();
  modDatabase::CloseDatabase();
}

void Projects::Insert(Project& project) {
  project.AttachTo(this);
  m_byId.Add(project, Decimal(project.Id()));
  m_byName.Add(project, project.Name());
  if (m_files) m_files->Add(project);
}

hearthmake::Build& Projects::ParentBuild() const {
  if (m_build == nullptr) automation::Raise(automation::RuntimeError::ObjectNotSet, "Projects");
  return *m_build;
}

automation::Ref<automation::Enumerator> Projects::NewEnum() {
  return automation::Make<CollectionEnumerator<Project>>(m_byId.Snapshot());
}

automation::Ref<Project> Projects::Item(const automation::Variant& vIndex) const {
  return automation::Ref<Project>(&m_byId.Item(vIndex));
}

automation::Ref<Project> Projects::GetByName(const std::string& sProjectName) const {
  return automation::Ref<Project>(&m_byName.Item(automation::Variant::FromText(sProjectName)));
}

Project& Projects::ById(std::int32_t id) const {
  const std::string key = Decimal(id);
  Project* project = m_byId.Find(key);
  return project != nullptr ? *project : m_byId.Item(automation::Variant::FromText(key));  // raises
}

automation::Ref<Project> Projects::Add(const std::string& strFile) {
  const bool isGroup = automation::EqualsIgnoreCaseAscii(automation::Right(strFile, 3), "vbg");
  return isGroup ? AddGroup(strFile) : AddProject(strFile);
}

automation::Ref<Project> Projects::AddProject(const std::string& strFile) {
  auto project = automation::Make<Project>();
  project->AttachTo(this);
  try {
    project->BeginEdit();
    project->LoadFromFile(strFile);
    RefuseDuplicateName(*project);
    project->ApplyEdit();
  } catch (...) {
    project->AttachTo(nullptr);
    throw;
  }
  Insert(*project);
  ParentBuild().RaiseProjectAdded(*project);
  return project;
}

automation::Ref<Project> Projects::AddGroup(const std::string& strFile) {
  const std::int32_t before = Count();
  for (const std::string& path : ReadProjectGroup(strFile)) {
    try {
      AddProject(path);
    } catch (const automation::Error& error) {
      if (!IsAlreadyInBuild(error)) throw;
    }
  }
  return Count() > before ? automation::Ref<Project>(&m_byId.At(m_byId.Count() - 1)) : nullptr;
}

void Projects::RefuseDuplicateName(const Project& project) const {
  const std::string name = project.Name();
  const Project* twin = m_byName.Find(name);
  if (twin == nullptr || twin == &project) return;
  automation::Raise(automation::BuildErrors::beProjectAlreadyInBuild, "Projects.Add",
                    "A project with the same name, " + name + ", is already part of this build");
}

void Projects::Renamed(Project& project) {
  if (m_byId.Find(Decimal(project.Id())) != &project) return;
  const automation::Ref<Project> held(&project);
  for (std::size_t i = 0; i < m_byName.Count(); ++i) {
    if (&m_byName.At(i) != &project) continue;
    m_byName.Remove(automation::Variant::FromLong(static_cast<std::int32_t>(i) + 1));
    break;
  }
  m_byName.Add(project, project.Name());
}

void Projects::Remove(Project& project) {
  const automation::Ref<Project> held(&project);
  const std::string key = Decimal(project.Id());
  if (m_byId.Find(key) != &project) return;
  if (m_files) m_files->Remove(project);
  if (m_byName.Find(project.Name()) == &project) m_byName.RemoveKey(project.Name());
  m_byId.RemoveKey(key);
  project.AttachTo(nullptr);
}

void Projects::FilesChanged(Project& project) {
  if (m_files && m_byId.Find(Decimal(project.Id())) == &project) m_files->MarkChanged(project);
}

ProjectFiles& Projects::Files() {
  if (!m_files) {
    m_files = std::make_unique<ProjectFiles>();
    for (std::size_t i = 0; i < m_byId.Count(); ++i) m_files->Add(m_byId.At(i));
  }
  return *m_files;
}

Project* Projects::FirstOf(const ProjectFiles::Candidates& candidates, const Project& owner) const {
  // One candidate as a rule, and no need to ask for its place in a list of many.
  if (candidates.size() == 1) return candidates.front() == &owner ? nullptr : candidates.front();
  Project* first = nullptr;
  std::size_t firstOrdinal = 0;
  for (Project* candidate : candidates) {
    if (candidate == &owner) continue;
    const std::size_t ordinal = m_byId.OrdinalOf(Decimal(candidate->Id()));
    if (first != nullptr && ordinal >= firstOrdinal) continue;
    first = candidate;
    firstOrdinal = ordinal;
  }
  return first;
}

Project* Projects::FindByBinary(std::string_view path, const Project& owner) {
  path = WithoutResourceIndex(path);
  if (path.empty()) return nullptr;
  Project* project = FirstOf(Files().ByBinaryPath(AbsolutePath(owner.Folder(), path)), owner);
  return project != nullptr ? project : FirstOf(Files().ByBinaryName(FileNamePart(path)), owner);
}

Project* Projects::FindByReferenceRow(const std::string& row, const Project& owner) {
  const std::string_view text = std::string_view(row).substr(row.find('=') + 1);
  if (text.starts_with("*\\A")) {
    return FirstOf(Files().ByProjectPath(AbsolutePath(owner.Folder(), text.substr(3))), owner);
  }
  if (text.starts_with("*\\G")) return FindByBinary(FieldOf(text, 3), owner);
  if (!text.starts_with('{')) return nullptr;
  const std::string_view control = FieldOf(text, 2);
  return FindByBinary(automation::Trim(control.substr(control.rfind(';') + 1)), owner);
}

const Project* Projects::FindByLibrary(const std::string& guid) const {
  for (std::size_t i = 0; i < m_byId.Count(); ++i) {
    const Project& project = m_byId.At(i);
    try {
      const auto library =
          project.ISActiveX() ? Ports().typeLibs->Read(project.BinaryPath()) : platform::TypeLibInfo();
      if (automation::EqualsIgnoreCaseAscii(library.guid, guid)) return &project;
    } catch (const automation::Error&) {
      continue;  // not compiled yet: it can't be the one
    }
  }
  return nullptr;
}

void Projects::SetCompileOrder() {
  std::unordered_map<std::int32_t, std::uint32_t> indexes;
  for (std::size_t i = 0; i < m_byId.Count(); ++i) indexes[m_byId.At(i).Id()] = static_cast<std::uint32_t>(i);
  ReferenceGraph graph;
  for (std::size_t i = 0; i < m_byId.Count(); ++i) {
    const KeyedCollection<Reference>& references = m_byId.At(i).ReferenceList().List();
    for (std::size_t r = 0; r < references.Count(); ++r) {
      if (references.At(r).IsExternal()) continue;
      const auto target = indexes.find(references.At(r).ReferencedProject());
      if (target != indexes.end()) graph.targets.push_back(target->second);
    }
    graph.CloseProject();
  }
  const CompileOrder result = SettleCompileOrder(graph);
  m_byId.Reorder(result.order);
  if (result.isSettled) return;
  automation::Raise(automation::BuildErrors::beCyclicReferences, "Projects.SetCompileOrder",
                    "Compile order can't be determined because of cyclic references.");
}

}  // namespace hearthmake
