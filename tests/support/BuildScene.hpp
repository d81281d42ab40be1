#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "build/Build.hpp"
#include "build/BuildEvents.hpp"
#include "build/Projects.hpp"
#include "project/Project.hpp"
#include "support/Workbench.hpp"

namespace hearthmake::support {

// Writes down what it hears, each event with its arguments; a test may do something at one of them.
class RecordingEvents : public BuildEvents {
 public:
  // Called after the event is written down; a flag that it sets goes back to the build.
  using Action = std::function<void(bool& cancel)>;

  void On(const std::string& event, Action action) { m_actions[event] = std::move(action); }
  std::vector<std::string> heard;

  void WillCompile(Project& objProject, bool& bCancel) override {
    Note("WillCompile " + objProject.Name(), bCancel);
  }
  void BuildFaild(Project* objProject, const std::string& strMessage, bool bCompileError) override {
    Note("BuildFaild " + (objProject == nullptr ? "-" : objProject->Name()) + " " +
         (bCompileError ? "compile error" : "other error") + ": " + strMessage);
  }
  void BuildCancled(Project& objProject) override { Note("BuildCancled " + objProject.Name()); }
  void GettingLatestVersion(SSProject& objSSProject, bool& bCancel) override {
    Note("GettingLatestVersion " + objSSProject.Project(), bCancel);
  }
  void MTSEvent(const std::string& strInfo, bool& Cancel) override { Note("MTSEvent " + strInfo, Cancel); }
  void ProjectAdded(Project& NewProject) override { Note("ProjectAdded " + NewProject.Name()); }
  void BuildComplete() override { Note("BuildComplete"); }
  void Error(const automation::Variant& strMessage) override {
    Note("Error " + automation::ToText(strMessage));
  }
  void ProjectCompiled(Project& objProject) override { Note("ProjectCompiled " + objProject.Name()); }
  void BuildStart(bool bResume) override { Note(bResume ? "BuildStart resume" : "BuildStart fresh"); }
  void ScriptNotify(const std::string& strMessage, automation::Variant& Cancel,
                    std::int32_t Progress) override {
    bool cancel = false;
    Note("ScriptNotify " + std::to_string(Progress) + " " + strMessage, cancel);
    if (cancel) Cancel = automation::Variant::FromBoolean(true);
  }

 private:
  void Note(const std::string& event) {
    bool unused = false;
    Note(event, unused);
  }
  void Note(const std::string& event, bool& cancel) {
    heard.push_back(event);
    const auto action = m_actions.find(event);
    if (action == m_actions.end()) return;
    const Action call = action->second;  // it may take this sink's actions away
    call(cancel);
  }

  std::map<std::string, Action> m_actions;
};

// A stored build "Suite" on a workbench, with a compiler that succeeds.
class BuildScene : public Workbench {
 public:
  explicit BuildScene(std::int32_t majorVersion = 10) : Workbench(majorVersion) {
    SetCompiler("echo \"Build of '$PROJECT' succeeded.\" > \"$LOG\"");
    build = Stored("Suite");
  }

  static automation::Ref<Build> Stored(const std::string& name) {
    auto stored = automation::Make<Build>();
    stored->BeginEdit();
    stored->SetName(name);
    stored->ApplyEdit();
    return stored;
  }
  static automation::Ref<Build> Loaded(std::int32_t id) {
    auto loaded = automation::Make<Build>();
    loaded->Load(id);
    return loaded;
  }

  // A compiler that fails on the project of this name.
  void FailOn(const std::string& name) const {
    SetCompiler("case \"$PROJECT\" in */" + name +
                ".vbp) printf \"Variable not defined\\r\\nBuild failed.\" > \"$LOG\";; "
                "*) echo \"Build of '$PROJECT' succeeded.\" > \"$LOG\";; esac");
  }

  // The project file C:\src\NAME.vbp. Type is one of Exe, OleDll, OleExe and Control.
  std::string WriteProject(const std::string& name, const std::string& type = "OleDll",
                           const std::string& rows = "") const {
    const std::string extension = type == "Control" ? "ocx" : type == "OleDll" ? "dll" : "exe";
    const std::string path = "C:\\src\\" + name + ".vbp";
    Write(path, "Type=" + type + "\n" + rows + "Startup=\"(None)\"\nName=\"" + name + "\"\nTitle=\"" + name +
                    "\"\nExeName32=\"" + name + "." + extension + "\"\nMajorVer=1\nMinorVer=0\n");
    return path;
  }
  automation::Ref<Project> Add(const std::string& name, const std::string& type = "OleDll",
                               const std::string& rows = "") const {
    return build->Projects().Add(WriteProject(name, type, rows));
  }
  // The row by which a project refers to another one beside it.
  static std::string RowTo(const std::string& name) {
    return "Reference=*\\G{00000000-0000-0000-0000-000000000001}#1.0#0#" + name + ".dll#" + name + "\n";
  }
  std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const auto& project : build->Projects().All()) names.push_back(project->Name());
    return names;
  }
  // The rows of a table that a condition selects.
  static std::int32_t CountRows(const std::string& table, const std::string& condition = "1 = 1");

  automation::Ref<Build> build;
};

inline std::int32_t BuildScene::CountRows(const std::string& table, const std::string& condition) {
  const auto rows =
      hearthmake::Ports()
          .workspace->OpenDatabase("C:\\data\\Build.mdb")
          ->OpenRecordset("SELECT * FROM " + table + " WHERE " + condition, platform::RecordsetType::Dynaset);
  std::int32_t count = 0;
  for (; !rows->AtEnd(); rows->MoveNext()) ++count;
  return count;
}

}  // namespace hearthmake::support
