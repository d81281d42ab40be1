#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "automation/Events.hpp"
#include "automation/FixedText.hpp"
#include "automation/Object.hpp"
#include "build/BuildConnection.hpp"
#include "build/BuildEvents.hpp"
#include "build/BuildReport.hpp"
#include "build/Projects.hpp"
#include "deployment/COMApplications.hpp"
#include "deployment/MTSPackages.hpp"
#include "scripting/Scripts.hpp"
#include "sourcecontrol/SSProjects.hpp"

namespace hearthmake {

class Builds;

// A named set of Visual Basic projects with everything that belongs to building them: the root object of
// a host, and the source of the events.
class Build final : public automation::Object, public automation::EventSource {
 public:
  static const automation::Interface& Describe();
  const automation::Interface& Declaration() const override { return Describe(); }

  Build() = default;

  // Up to 30 characters, not blank (error 45, source "Build.Name", "Invalid name").
  std::string Name() const { return m_record.name.Get(); }
  void SetName(const std::string& value);
  // The address from which GenerateDllBaseAddresses is to start; any value.
  std::int32_t StartDllBaseAddress() const { return m_record.startDllBaseAddress; }
  void SetStartDllBaseAddress(std::int32_t value);
  // Key of the row; 0 until first saved.
  std::int32_t Id() const { return m_id; }
  // The collections come to life when first read; their members are loaded then.
  hearthmake::Projects& Projects();
  // be_BuildNotFound, source "Build.Load", "Build not found!".
  void Load(std::int32_t lngBuildId);
  // The edit cycle; its errors name Project as their source. ApplyEdit after Delete removes the build with
  // all that belongs to it (beBuildCanNotDelete when that fails; nothing is removed then).
  void BeginEdit();
  void ApplyEdit();
  void CancelEdit();
  // Breaks the links between the objects of the build.
  void Kill();
  void Delete();
  // Makes the project files fit a project group of the projects that CompileMe is on for; see
  // Project::FixReferencesInProjectGroup.
  void FixReferencesInProjectGroup();
  // Writes a Visual Basic project group of the projects that CompileMe is on for, in list order, paths
  // relative to it; the one named as objStartUpProject is marked.
  void CreateProjectGroupFile(const std::string& strFileName, Project* objStartUpProject);
  hearthmake::SSProjects& SSProjects();
  // Reads each project's references anew from its file and stores them.
  void AutoDetectReferences();
  // Gives each in-process project its own base address from lngStart on, in list order, on 64 KB
  // boundaries and clear of the sizes of the binaries. Error 6 beyond 32 bits.
  void GenerateDllBaseAddresses(std::int32_t lngStart);
  hearthmake::MTSPackages& MTSPackages();
  hearthmake::COMApplications& COMApplications();
  hearthmake::Scripts& Scripts();
  // The project at which the last run stopped; null when none did.
  Project* FailedProject() const { return m_failedProject.Get(); }
  // Adds every project file below a folder and detects references. Without bIncludeTestProjects, files
  // whose names hold "test" or begin with "project" are left out. A file that can't be added is passed
  // over.
  void CreateBuildFromPath(const std::string& strPath, bool bIncludeTestProjects);
  // Writes the batch files that register and unregister the ActiveX components of the build, into
  // strRelateivePath with paths relative to it, or into the library's own folder with full paths.
  // strGeneratedFiles receives their names, parted by CR LF. True once both are written.
  bool GenerateRegisterBATfile(bool bRelativePath, const std::string& strRelateivePath,
                               std::string& strGeneratedFiles);
  // Writes the last line of the report, "Build successfully completed" or "Build Stoped", and drops the
  // report; a later run begins a new one.
  void StopReporting(bool bSuccess);
  // Runs a command and waits for its end.
  void CmdExecute(const std::string& strCommand);

  // Event sinks; each must be removed before it goes.
  void AddSink(BuildEvents& sink);
  void RemoveSink(BuildEvents& sink);
  // Listeners that hear the events by name.
  std::uint32_t Advise(std::shared_ptr<automation::EventSink> sink) override;
  void Unadvise(std::uint32_t connection) override;

  // For the members of the build: events, reports and scripts.
  void WillCompile(Project& objProject, bool& bCancel);
  void ProjectCompiled(Project& objProject);
  // Tells of a failed run and keeps its project; no error leaves it.
  void BuildFailed(Project* objProject, const std::string& strMessage, bool bCompileError);
  void RaiseBuildCancled(Project& objProject);
  void RaiseMTSEvent(const std::string& strInfo, bool& Cancel);
  void RaiseProjectAdded(Project& NewProject);
  void RaiseError(const std::string& strMessage);
  void RaiseBuildComplete();
  void RaiseBuildStart(bool bResume);
  void RaiseScriptNotify(const std::string& strMessage, automation::Variant& Cancel, std::int32_t Progress);
  // An entry of the build report, which begins with the first one; see BuildReport::ReportAction.
  void ReportAction(const ReportItem* oReportItem, std::int32_t ActionType, const std::string& strInfo);
  // Runs the script of an event, when scripts are switched on and it has one; with a project, that is
  // the active one from then on.
  void RunScript(BuildScripts event, Project* objProject = nullptr);

  void LoadLight(std::int32_t id, const std::string& name, Builds& parent);

 protected:
  ~Build() override;

 private:
  struct Record {
    automation::FixedText<30> name;
    std::int32_t startDllBaseAddress = 0;
    bool dirty = false;
  };

  void Save();
  void DeleteBuild();
  void DeleteMembers();
  void DropMembers();
  void RequireEditMode() const;
  void Raise(const std::function<void(BuildEvents&)>& event);
  void ReportFailure(const Project* objProject, const std::string& strMessage);
  void RaiseBuildFaild(Project* objProject, const std::string& strMessage, bool bCompileError);

  Record m_record;
  std::unique_ptr<Record> m_snapshot;  // while editing
  std::int32_t m_id = 0;
  bool m_isDeleted = false;
  automation::Held<hearthmake::Projects> m_projects;
  automation::Held<hearthmake::SSProjects> m_ssProjects;
  automation::Held<hearthmake::MTSPackages> m_mtsPackages;
  automation::Held<hearthmake::COMApplications> m_comApplications;
  automation::Held<hearthmake::Scripts> m_scripts;
  automation::Held<Project> m_failedProject;
  std::unique_ptr<BuildReport> m_report;  // from its first entry to StopReporting
  std::vector<BuildEvents*> m_sinks;
  std::map<std::uint32_t, std::unique_ptr<BuildConnection>> m_connections;
  std::uint32_t m_lastConnection = 0;
};

}  // namespace hearthmake
