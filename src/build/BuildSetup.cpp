// Build: the helpers that fill or adjust a build in bulk.

#include <limits>

#include "automation/Error.hpp"
#include "automation/Text.hpp"
#include "build/Build.hpp"
#include "foundation/Paths.hpp"
#include "foundation/mFindFiles.hpp"
#include "foundation/modDatabase.hpp"

namespace hearthmake {

namespace {

constexpr std::int64_t kAddressStep = 65536;

// Test projects, and those that still carry the default name of new ones.
bool IsLeftOut(std::string_view path) {
  const std::string name = automation::Lower(FileNamePart(path));
  return name.find("test") != std::string::npos || name.starts_with("project");
}

std::int32_t CheckedLong(std::int64_t value) {
  if (value > std::numeric_limits<std::int32_t>::max() || value < std::numeric_limits<std::int32_t>::min()) {
    automation::Raise(automation::RuntimeError::Overflow, "Build.GenerateDllBaseAddresses");
  }
  return static_cast<std::int32_t>(value);
}

// A project's edit; cancelled when it is left without Apply.
class ProjectEdit {
 public:
  explicit ProjectEdit(Project& project) : m_project(project) { project.BeginEdit(); }
  ProjectEdit(const ProjectEdit&) = delete;
  ProjectEdit& operator=(const ProjectEdit&) = delete;
  ~ProjectEdit() {
    if (!m_isApplied) m_project.CancelEdit();
  }
  void Apply() {
    m_project.ApplyEdit();
    m_isApplied = true;
  }

 private:
  Project& m_project;
  bool m_isApplied = false;
};

}  // namespace

void Build::CreateBuildFromPath(const std::string& strPath, bool bIncludeTestProjects) {
  const std::string folder = strPath.ends_with('\\') ? strPath : strPath + "\\";
  const std::vector<std::string> paths = mFindFiles::FindFiles(folder, ".vbp");
  Projects();  // loaded before the batch: loading closes the database
  modDatabase::Batch batch;
  for (const std::string& path : paths) {
    if (!bIncludeTestProjects && IsLeftOut(path)) continue;
    try {
      Projects().Add(path);
    } catch (const automation::Error&) {
      continue;  // passed over: a name that is taken, or no project file
    }
    batch.Step();
  }
  batch.Finish();
  AutoDetectReferences();
}

void Build::AutoDetectReferences() {
  const auto projects = Projects().All();
  modDatabase::Batch batch;
  for (const auto& project : projects) {
    ProjectEdit edit(*project);
    project->GetReferencesFromVBP();
    edit.Apply();
    batch.Step();
  }
  batch.Finish();
}

void Build::GenerateDllBaseAddresses(std::int32_t lngStart) {
  std::int32_t next = lngStart;
  std::int32_t end = 0;
  const auto projects = Projects().All();
  modDatabase::Batch batch;
  for (const auto& project : projects) {
    if (!project->IsInprocess()) continue;
    ProjectEdit edit(*project);
    if (end != 0)
      next = CheckedLong(static_cast<std::int64_t>(end) / kAddressStep * kAddressStep + kAddressStep);
    project->SetDllBaseAddress(next);
    edit.Apply();
    end = CheckedLong(static_cast<std::int64_t>(next) + project->FileSizeExe32());
    batch.Step();
  }
  batch.Finish();
}

}  // namespace hearthmake
