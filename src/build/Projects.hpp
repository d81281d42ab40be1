#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "automation/Object.hpp"
#include "build/ProjectFiles.hpp"
#include "foundation/KeyedCollection.hpp"
#include "project/Project.hpp"

namespace hearthmake {

class Build;

// The projects of a build, in the order in which they are compiled, and the build run itself.
class Projects final : public automation::Object {
 public:
  static const automation::Interface& Describe();
  const automation::Interface& Declaration() const override { return Describe(); }

  explicit Projects(hearthmake::Build& build);

  automation::Ref<automation::Enumerator> NewEnum();
  automation::Ref<automation::Enumerator> Enumerate() override { return NewEnum(); }
  std::int32_t Count() const { return static_cast<std::int32_t>(m_byId.Count()); }
  // By position from 1 (error 9) or by id as text (error 5).
  automation::Ref<Project> Item(const automation::Variant& vIndex) const;
  // Adds a project file, or every project that a group file (.vbg) lists; those whose names are in the
  // build already are passed over then. The new project; of a group the last one, null when it brought
  // none. Errors: those of Project.LoadFromFile; beProjectAlreadyInBuild, source "Projects.Add".
  automation::Ref<Project> Add(const std::string& strFile);
  // Compiles what is to be compiled, in list order; bResume goes on where the last run failed. False when
  // the run failed; what went wrong comes as events. No error leaves it.
  bool Build(bool bResume);
  // Puts each project after those it references. beCyclicReferences, source "Projects.SetCompileOrder".
  void SetCompileOrder();
  // Error 5 for an unknown name.
  automation::Ref<Project> GetByName(const std::string& sProjectName) const;

  // For the build and its members.
  // Reads the projects of the build with their references, and closes the database.
  void Load();
  hearthmake::Build& ParentBuild() const;
  Project& ById(std::int32_t id) const;
  std::vector<automation::Ref<Project>> All() const { return m_byId.Snapshot(); }
  void Remove(Project& project);
  void RefuseDuplicateName(const Project& project) const;
  void Renamed(Project& project);
  void FilesChanged(Project& project);
  // The project that a reference row of a project file names, seen from that project's folder; never the
  // project itself. Null when none does.
  Project* FindByReferenceRow(const std::string& row, const Project& owner);
  // The project whose binary holds the type library; null when none does.
  const Project* FindByLibrary(const std::string& guid) const;
  void ReleaseMembers();

 protected:
  ~Projects() override;

 private:
  void Insert(Project& project);
  automation::Ref<Project> AddProject(const std::string& strFile);
  automation::Ref<Project> AddGroup(const std::string& strFile);
  ProjectFiles& Files();
  Project* FirstOf(const ProjectFiles::Candidates& candidates, const Project& owner) const;
  Project* FindByBinary(std::string_view path, const Project& owner);

  // BuildRun.cpp
  void Run(bool bResume, automation::Ref<Project>& current);
  void StartFreshRun();
  void ShutDownComponentServices();
  bool CompileProject(Project& project);

  hearthmake::Build* m_build;  // null once released
  KeyedCollection<Project> m_byId{"Projects.item"};
  KeyedCollection<Project> m_byName{"Projects.GetByName"};
  std::unique_ptr<ProjectFiles> m_files;  // made at the first look-up
};

}  // namespace hearthmake
