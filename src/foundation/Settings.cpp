#include "foundation/Settings.hpp"

#include "automation/Error.hpp"
#include "automation/Interface.hpp"
#include "foundation/Apartment.hpp"
#include "foundation/RegistryText.hpp"
#include "foundation/mSettings.hpp"

namespace hearthmake {

namespace {

constexpr const char* kApplication = "Hearthmake";
constexpr const char* kSection = "VB";
constexpr const char* kCompilerOfNoRegistry = "vb6.exe";

// The two spellings of a Boolean in the store; which key has which is fixed by the stores out there.
std::string NumberText(bool value) { return value ? "-1" : "0"; }
std::string WordText(bool value) { return value ? "True" : "False"; }

// The program of the command that opens project files: "C:\VB98\VB6.EXE" "%1".
std::string FindCompiler() {
  std::string command;
  if (!GetRegistryValue(platform::RegistryRoot::ClassesRoot, "VisualBasic.Project\\shell\\open\\command", "",
                        command)) {
    return kCompilerOfNoRegistry;
  }
  std::string_view text = automation::Trim(command);
  if (text.size() > 2) text = text.substr(1, text.size() - 2);
  const std::size_t quote = text.find('"');
  return quote == std::string_view::npos ? kCompilerOfNoRegistry : std::string(text.substr(0, quote));
}

bool HoldsFile(const std::string& folder) {
  try {
    for (const auto& entry : Ports().files->List(folder)) {
      if (!entry.isFolder) return true;
    }
  } catch (const automation::Error&) {
    return false;
  }
  return false;
}

std::string WithBackslash(std::string folder) {
  if (!folder.ends_with('\\')) folder.push_back('\\');
  return folder;
}

}  // namespace

Settings::Settings() { LoadFromStore(); }

std::string Settings::VBExe() {
  if (m_record.vbExe.IsEmpty()) m_record.vbExe = FindCompiler();
  return m_record.vbExe.Get();
}

void Settings::SetVBExe(const std::string& value) { Assign(m_record.vbExe, value); }
void Settings::SetSetProjectCompatible(bool value) { Assign(m_record.setProjectCompatible, value); }
void Settings::SetScriptTimeOut(std::int32_t value) { Assign(m_record.scriptTimeOut, value); }
void Settings::SetUseOriginalVbp(bool value) { Assign(m_record.useOriginalVbp, value); }
void Settings::SetTakeLatestFromVSS(bool value) { Assign(m_record.takeLatestFromVSS, value); }
void Settings::SetMakeFilesWriteable(bool value) { Assign(m_record.makeFilesWriteable, value); }
void Settings::SetAskForMTSPackage(bool value) { Assign(m_record.askForMTSPackage, value); }
void Settings::SetRunScripts(bool value) { Assign(m_record.runScripts, value); }
void Settings::SetCreateReport(bool value) { Assign(m_record.createReport, value); }
void Settings::SetBuildReport(const std::string& value) { Assign(m_record.buildReport, value); }
void Settings::SetIgnoreScriptError(bool value) { Assign(m_record.ignoreScriptError, value); }

std::string Settings::BuildReport() {
  const std::string own = Ports().system->ComponentFolder();
  std::string folder = WithBackslash(m_record.buildReport.IsEmpty() ? own : m_record.buildReport.Get());
  if (!HoldsFile(folder)) folder = WithBackslash(own);
  m_record.buildReport = folder;
  return m_record.buildReport.Get();
}

void Settings::LoadFromStore() {
  const auto pairs = Ports().settings->GetAll(kApplication, kSection);
  // Each pair is assigned by its name, so that the store decides what is read. Through the declaration
  // and not through Let, which would take a reference on an object that nobody holds yet.
  for (const auto& [key, value] : pairs) {
    const auto member = Describe().Find(key);
    if (!member) automation::Raise(automation::RuntimeError::MemberNotFound, "Settings", key);
    automation::Variant text = automation::Variant::FromText(value);
    Describe().Invoke(*this, *member, automation::InvokeKind::Let, {&text, 1});
  }
  m_record.dirty = false;
}

void Settings::SaveToStore() {
  Ports().settings->Save(kApplication, kSection,
                         {{"VBExe", VBExe()},
                          {"SetProjectCompatible", NumberText(m_record.setProjectCompatible)},
                          {"UseOriginalVbp", NumberText(m_record.useOriginalVbp)},
                          {"TakeLatestFromVSS", NumberText(m_record.takeLatestFromVSS)},
                          {"MakeFilesWriteable", NumberText(m_record.makeFilesWriteable)},
                          {"AskForMTSPackage", NumberText(m_record.askForMTSPackage)},
                          {"RunScripts", NumberText(m_record.runScripts)},
                          {"BuildReport", BuildReport()},
                          {"CreateReport", WordText(m_record.createReport)},
                          {"ScriptTimeOut", automation::Decimal(m_record.scriptTimeOut)},
                          {"IgnoreScriptError", WordText(m_record.ignoreScriptError)}});
}

void Settings::ApplyEdit() {
  // The source names CancelEdit on purpose: hosts have compared against it.
  if (!m_editing) automation::Raise(automation::kEditCycle, "clSettings.CancelEdit", "Not in edit mode");
  const automation::Ref<Settings> self(this);  // the cache may hold the only other reference
  if (m_record.dirty) {
    SaveToStore();
    mSettings::ResetSettings();
  }
  m_record.dirty = false;
}

void Settings::CancelEdit() {
  if (!m_editing) automation::Raise(automation::kEditCycle, "clSettings.CancelEdit", "Not in edit mode");
  m_editing = false;
  m_record = m_snapshot;
}

void Settings::BeginEdit() {
  if (m_editing) automation::Raise(automation::kEditCycle, "clSettings.BeginEdit", "Already in edit mode");
  m_editing = true;
  m_snapshot = m_record;
}

}  // namespace hearthmake
