#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "automation/Error.hpp"
#include "automation/Interface.hpp"
#include "automation/Object.hpp"
#include "platform/ScriptEngine.hpp"

namespace hearthmake {

class Build;
class Project;

// The points of a build run at which a script of the user's runs.
enum class BuildScripts : std::int32_t {
  BS_BEFORESOURCESAFE = 0,
  BS_BEFORECOMPILE = 1,
  BS_BEFORE_PROJECT_COMPILE = 2,
  BS_AFTER_PROJECT_COMPILE = 3,
  BS_BUILDFAILED = 4,
  BS_BUILDCOMPLETE = 5,
  BS_AFTERMTS = 6,
};
const automation::Enumeration& DescribeEnumeration(BuildScripts);
// As messages name it: "Before Compile".
const char* EventName(BuildScripts event);

// The seven event scripts of a build, and the engine that runs them. The engine comes to life when it is
// first needed and lives as long as this object: what one script defines, later ones see.
//
// Scripts see Session (a dictionary), Build and App (with their members as names of their own) and
// Project(), the project at work.
class Scripts final : public automation::Object {
 public:
  static const automation::Interface& Describe();
  const automation::Interface& Declaration() const override { return Describe(); }

  explicit Scripts(Build& build);

  std::string BeforeSourceSafe() const { return Text(BuildScripts::BS_BEFORESOURCESAFE); }
  void SetBeforeSourceSafe(const std::string& value) { SetText(BuildScripts::BS_BEFORESOURCESAFE, value); }
  std::string BeforeComplie() const { return Text(BuildScripts::BS_BEFORECOMPILE); }
  void SetBeforeComplie(const std::string& value) { SetText(BuildScripts::BS_BEFORECOMPILE, value); }
  std::string BeforeProjectComplie() const { return Text(BuildScripts::BS_BEFORE_PROJECT_COMPILE); }
  void SetBeforeProjectComplie(const std::string& value) {
    SetText(BuildScripts::BS_BEFORE_PROJECT_COMPILE, value);
  }
  std::string AfterProjectCompile() const { return Text(BuildScripts::BS_AFTER_PROJECT_COMPILE); }
  void SetAfterProjectCompile(const std::string& value) {
    SetText(BuildScripts::BS_AFTER_PROJECT_COMPILE, value);
  }
  std::string BuildFailed() const { return Text(BuildScripts::BS_BUILDFAILED); }
  void SetBuildFailed(const std::string& value) { SetText(BuildScripts::BS_BUILDFAILED, value); }
  std::string CompileComplete() const { return Text(BuildScripts::BS_BUILDCOMPLETE); }
  void SetCompileComplete(const std::string& value) { SetText(BuildScripts::BS_BUILDCOMPLETE, value); }
  std::string AfterMTSpackage() const { return Text(BuildScripts::BS_AFTERMTS); }
  void SetAfterMTSpackage(const std::string& value) { SetText(BuildScripts::BS_AFTERMTS, value); }
  // Stores the seven texts.
  void Save();
  // Runs any script text; Script receives the text after includes and substitutions. Errors:
  // bePrepareScriptControl; beEvaluateInternalsFaild; for all others beScriptSyntaxError, source
  // "Scripts.Execute", "Script Error: ", the description, CR LF and ErrorText.
  bool Execute(std::string& Script);
  // The source text of the engine's last error, and its line from 1; empty and 0 when the last script had
  // none.
  std::string ErrorText() const;
  std::int32_t ErrorLine() const;
  // Tells the host something: the event ScriptNotify. What the host makes of Cancel goes back.
  void Notify(const std::string& strMessage, std::optional<automation::Variant>& Cancel,
              std::optional<std::int32_t> Progress);
  // Makes an object visible to scripts.
  void AddObject(automation::Object* oObject, const std::string& strname);

  // For the build and the program around it.
  void Load();
  const std::string& Text(BuildScripts event) const { return m_texts[static_cast<std::size_t>(event)]; }
  void SetText(BuildScripts event, const std::string& text) {
    m_texts[static_cast<std::size_t>(event)] = text;
  }
  // Runs the script of an event; values beyond the seven do nothing. False when it failed and the setting
  // IgnoreScriptError is on: the build's event Error tells of it then. Otherwise a failure is raised as
  // Execute words it. A project that is given is the active one from then on.
  bool RunEvent(BuildScripts event, Project* active = nullptr);
  // From now on, Project() gives this project.
  void MakeActive(Project& project);
  // The last script of an event that failed, and where; nothing when none has.
  struct Failure {
    BuildScripts event = BuildScripts::BS_BEFORECOMPILE;
    platform::ScriptFault fault;
  };
  const std::optional<Failure>& LastFailure() const { return m_failure; }
  // Compiles the script of an event, includes and values put in, without running it. Errors of Execute.
  void Check(BuildScripts event);
  // Where the engine's last error happened.
  platform::ScriptFault Fault() const;
  void ReleaseMembers() { m_engine.reset(); }

 private:
  using Engine = std::shared_ptr<platform::ScriptEngine>;

  struct Guard;

  Build& ParentBuild() const;
  Engine Prepare();
  Engine PrepareRun();
  Engine MakeEngine();
  static void SetActive(platform::ScriptEngine& engine, Project& project);
  std::string Evaluate(const std::string& script);

  std::array<std::string, 7> m_texts;
  // Shared with the calls that are under way: a script may make the build drop this object.
  Engine m_engine;
  std::optional<Failure> m_failure;
};

}  // namespace hearthmake
