#include "scripting/Scripts.hpp"

#include <vector>

#include "automation/Error.hpp"
#include "automation/Text.hpp"
#include "build/Build.hpp"
#include "foundation/Apartment.hpp"
#include "foundation/mSettings.hpp"
#include "foundation/modDatabase.hpp"
#include "scripting/App.hpp"
#include "scripting/ScriptText.hpp"

namespace hearthmake {

namespace {

using automation::BuildErrors;
using automation::Variant;

// Three scripts share a column; a text that holds the separator itself is cut apart at the next load.
constexpr std::string_view kSeparator = "[||]";

constexpr const char* kActiveProject = "Dim m_ooProject ";
constexpr const char* kProjectFunction = "Function Project()\r\n Set Project = m_ooProject \r\nEnd Function";
constexpr const char* kSetActiveProject =
    "Sub hearthmake_SetActiveProject(oProject) \r\n set m_ooProject = oProject\r\nEnd Sub";

constexpr std::int32_t kConnected = 1;
constexpr std::int32_t kNoTimeOut = -1;

bool IsEvent(BuildScripts event) {
  return event >= BuildScripts::BS_BEFORESOURCESAFE && event <= BuildScripts::BS_AFTERMTS;
}

std::vector<std::string> SplitTexts(const std::string& joined) {
  std::vector<std::string> parts;
  std::size_t begin = 0;
  for (std::size_t end; (end = joined.find(kSeparator, begin)) != std::string::npos;
       begin = end + kSeparator.size()) {
    parts.push_back(joined.substr(begin, end - begin));
  }
  parts.push_back(joined.substr(begin));
  parts.resize(3);
  return parts;
}

// The setting of a fresh installation is 0, which can't mean that every script is too slow.
std::int32_t TimeOut() {
  const std::int32_t milliseconds = mSettings::ScriptTimeOut();
  return milliseconds > 0 ? milliseconds : kNoTimeOut;
}

bool IsNumber(const automation::Error& error, BuildErrors number) {
  return error.Number() == static_cast<std::int32_t>(number);
}

bool KeepsItsNumber(const automation::Error& error) {
  return IsNumber(error, BuildErrors::bePrepareScriptControl) ||
         IsNumber(error, BuildErrors::beEvaluateInternalsFaild);
}

platform::ScriptFault FaultOf(const platform::ScriptEngine* engine) {
  return engine == nullptr ? platform::ScriptFault() : engine->Fault();
}

std::string WrappedText(const automation::Error& error, const platform::ScriptFault& fault) {
  return "Script Error: " + error.Description() + "\r\n" + fault.text;
}

[[noreturn]] void RaiseFailure(const automation::Error& error, const platform::ScriptFault& fault) {
  const auto number =
      KeepsItsNumber(error) ? error.Number() : static_cast<std::int32_t>(BuildErrors::beScriptSyntaxError);
  automation::Raise(number, "Scripts.Execute", WrappedText(error, fault));
}

}  // namespace

const char* EventName(BuildScripts event) {
  switch (event) {
    case BuildScripts::BS_BEFORESOURCESAFE: return "Before SourceSafe";
    case BuildScripts::BS_BEFORECOMPILE: return "Before Compile";
    case BuildScripts::BS_BEFORE_PROJECT_COMPILE: return "Before Project Compile";
    case BuildScripts::BS_AFTER_PROJECT_COMPILE: return "After Project Compile";
    case BuildScripts::BS_BUILDFAILED: return "Build Failed";
    case BuildScripts::BS_BUILDCOMPLETE: return "Compile Complete";
    case BuildScripts::BS_AFTERMTS: return "After MTS";
  }
  return "";
}

// The script that runs may make everybody drop these two, and kill the build, which parts them.
struct Scripts::Guard {
  explicit Guard(Scripts& running) : scripts(&running), build(static_cast<Build*>(running.Owner())) {}
  const automation::Ref<Scripts> scripts;
  const automation::Ref<Build> build;
};

Scripts::Scripts(Build& build) { SetOwner(&build); }

Build& Scripts::ParentBuild() const {
  if (Owner() == nullptr) automation::Raise(automation::RuntimeError::ObjectNotSet, "Scripts");
  return static_cast<Build&>(*Owner());
}

void Scripts::Load() {
  m_texts = {};
  const auto row = modDatabase::OpenRow("SELECT * FROM Scripts WHERE BUildID = ", ParentBuild().Id());
  if (!row->AtEnd()) {
    SetBeforeSourceSafe(row->GetText("BeforeSSafe"));
    const auto parts = SplitTexts(row->GetText("BeforeCompile"));
    SetBeforeComplie(parts[0]);
    SetBeforeProjectComplie(parts[1]);
    SetAfterProjectCompile(parts[2]);
    SetBuildFailed(row->GetText("BuildFailed"));
    SetCompileComplete(row->GetText("ComplieComplete"));
    SetAfterMTSpackage(row->GetText("AfterMTS"));
  }
  row->Close();
}

void Scripts::Save() {
  const std::int32_t id = ParentBuild().Id();
  const auto row = modDatabase::OpenRow("SELECT * FROM Scripts WHERE BUildID = ", id);
  if (row->AtEnd()) {
    row->AddNew();
  } else {
    row->Edit();
  }
  row->SetLong("BuildID", id);
  row->SetText("BeforeSSafe", BeforeSourceSafe());
  row->SetText("BeforeCompile", BeforeComplie() + std::string(kSeparator) + BeforeProjectComplie() +
                                    std::string(kSeparator) + AfterProjectCompile());
  row->SetText("BuildFailed", BuildFailed());
  row->SetText("ComplieComplete", CompileComplete());
  row->SetText("AfterMTS", AfterMTSpackage());
  row->Update();
  row->Close();
}

Scripts::Engine Scripts::Prepare() {
  if (m_engine) return m_engine;
  try {
    // Kept only when it is whole: a failure leaves none, so that the next call tries again.
    m_engine = MakeEngine();
    Apartment::Current().EndWithMe(m_engine);
  } catch (const automation::Error& error) {
    automation::Raise(BuildErrors::bePrepareScriptControl, "Scripts.PrepareScriptControl",
                      "The script engine can't be prepared: " + error.Description());
  }
  return m_engine;
}

Scripts::Engine Scripts::MakeEngine() {
  Build& build = ParentBuild();
  const Engine engine = Ports().scripts->Create();
  engine->SetLanguage("VBScript");
  engine->AddObject("Session", engine->CreateObject("Scripting.Dictionary"), false);
  engine->AddCode(kActiveProject);
  engine->AddCode(kProjectFunction);
  engine->AddCode(kSetActiveProject);
  engine->SetLanguage("VBScript");
  engine->SetTimeout(TimeOut());
  engine->SetState(kConnected);
  engine->AddObject("Build", automation::Ref<automation::Object>(&build), true);
  engine->AddObject("App", automation::Make<App>(), true);
  if (build.Projects().Count() > 0) SetActive(*engine, *build.Projects().Item(Variant::FromLong(1)));
  return engine;
}

void Scripts::MakeActive(Project& project) { SetActive(*Prepare(), project); }

void Scripts::SetActive(platform::ScriptEngine& engine, Project& project) {
  Variant argument = Variant::FromObject(automation::Ref<automation::Object>(&project));
  engine.Run("hearthmake_SetActiveProject", {&argument, 1});
}

// What went wrong in a script before is over then, so that a failure outside of the engine (an include file)
// is not told with the place of another one.
Scripts::Engine Scripts::PrepareRun() {
  const Engine engine = Prepare();
  engine->ClearFault();
  return engine;
}

std::string Scripts::Evaluate(const std::string& script) {
  return ScriptText::EvaluateInternals(ScriptText::DoIncludes(script), ParentBuild());
}

bool Scripts::Execute(std::string& Script) {
  const Guard guard(*this);
  Engine engine;
  try {
    engine = PrepareRun();
    Script = Evaluate(Script);
    engine->ExecuteStatement(Script);
    return true;
  } catch (const automation::Error& error) {
    if (KeepsItsNumber(error)) throw;
    automation::Raise(BuildErrors::beScriptSyntaxError, "Scripts.Execute",
                      WrappedText(error, FaultOf(engine.get())));
  }
}

bool Scripts::RunEvent(BuildScripts event, Project* active) {
  if (!IsEvent(event)) return true;
  const Guard guard(*this);
  Engine engine;
  try {
    engine = PrepareRun();
    if (active != nullptr) SetActive(*engine, *active);
    engine->ExecuteStatement(Evaluate(Text(event)));
    return true;
  } catch (const automation::Error& error) {
    m_failure = {event, FaultOf(engine.get())};
    if (!mSettings::IgnoreScriptError() || !guard.build) RaiseFailure(error, m_failure->fault);
    guard.build->RaiseError(std::string("Script error in event ") + EventName(event) + ". " +
                            error.Description());
    return false;
  }
}

void Scripts::Check(BuildScripts event) {
  const Engine engine = PrepareRun();
  engine->Check(Evaluate(Text(event)));
}

platform::ScriptFault Scripts::Fault() const { return FaultOf(m_engine.get()); }

std::string Scripts::ErrorText() const { return Fault().text; }
std::int32_t Scripts::ErrorLine() const { return Fault().line; }

void Scripts::Notify(const std::string& strMessage, std::optional<Variant>& Cancel,
                     std::optional<std::int32_t> Progress) {
  Variant unheard;
  ParentBuild().RaiseScriptNotify(strMessage, Cancel ? *Cancel : unheard, Progress.value_or(0));
}

void Scripts::AddObject(automation::Object* oObject, const std::string& strname) {
  Prepare()->AddObject(strname, automation::Ref<automation::Object>(oObject), false);
}

}  // namespace hearthmake
