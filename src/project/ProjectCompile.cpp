// Project: compiling it, and the identity of what came out.

#include <array>

#include "automation/Error.hpp"
#include "automation/Joined.hpp"
#include "automation/Text.hpp"
#include "build/Build.hpp"
#include "build/Projects.hpp"
#include "foundation/Apartment.hpp"
#include "foundation/Paths.hpp"
#include "foundation/mSettings.hpp"
#include "foundation/modExecute.hpp"
#include "project/Project.hpp"

namespace hearthmake {

namespace {

constexpr const char* kLogName = "CR.txt";
// What the compiler may want to write over, in the order in which it is made writeable.
constexpr std::array<const char*, 8> kBinaryExtensions = {".exe", ".dll", ".ocx", ".tlb",
                                                          ".exp", ".lib", ".vbr", ".obj"};

std::string StripBraces(const std::string& guid) {
  return guid.size() > 2 && guid.front() == '{' ? guid.substr(1, guid.size() - 2) : guid;
}

constexpr const char* kGuidSource = "Project.GUID";

// The type library of a project's binary; any failure to read it is the missing id of the project.
platform::TypeLibInfo ReadLibrary(const std::string& path) {
  try {
    return Ports().typeLibs->Read(path);
  } catch (const automation::Error&) {
    automation::Raise(
        automation::BuildErrors::beGUIDmissing, kGuidSource,
        "A typelib for the file " + path + " could not be found. The file is either missing or corrupt.");
  }
}

// Puts a project's compatible mode back, whatever happens meanwhile.
class CompatibleModeGuard {
 public:
  explicit CompatibleModeGuard(Project& project, CompatibleModes restored)
      : m_project(project), m_restored(restored) {}
  CompatibleModeGuard(const CompatibleModeGuard&) = delete;
  CompatibleModeGuard& operator=(const CompatibleModeGuard&) = delete;
  // A mode that is right already keeps its text: a file without that row must not get one.
  ~CompatibleModeGuard() {
    if (m_project.CompatibleMode() != m_restored) m_project.SetCompatibleMode(m_restored);
  }

 private:
  Project& m_project;
  CompatibleModes m_restored;
};

}  // namespace

// Each user of a project asks for its identity. As long as the binary is the same, a look at its stamp is all
// that it takes.
const Project::LibraryIdentity& Project::Identity() {
  if (!ISActiveX()) automation::Raise(automation::kInvalidValue, kGuidSource, "Projet is not ActiveX");
  const std::string& path = CompletedPath();
  const platform::FileStamp stamp = Ports().files->Stamp(path);
  if (!IsLibraryKnown(stamp)) {
    const platform::TypeLibInfo library = ReadLibrary(path);
    m_library = {{automation::Upper(StripBraces(library.guid)),
                  automation::Hex(library.majorVersion) + "." + automation::Hex(library.minorVersion)},
                 stamp,
                 Ports().typeLibs};
  }
  return m_library.identity;
}

// Another apartment may read the same file with other eyes.
bool Project::IsLibraryKnown(const platform::FileStamp& binary) const {
  const auto& reader = Ports().typeLibs;
  const bool isSameReader = !m_library.reader.owner_before(reader) && !reader.owner_before(m_library.reader);
  return isSameReader && binary.size >= 0 && binary == m_library.stamp;
}

std::string Project::GUID() { return Identity().guid; }

std::string Project::BinaryVersion() { return Identity().version; }

bool Project::Compile() {
  if (!CompileMe()) return false;
  const automation::Ref<Project> self(this);  // event handlers may drop the last outside reference
  if (CompileOnce()) return true;
  const bool mayBreak = m_compileLog.find("compatibility") != std::string::npos && !PreserveBinary() &&
                        mSettings::SetProjectCompatible();
  if (mayBreak && BreakCompatibility()) return true;
  automation::Raise(automation::BuildErrors::be_FailToCompile, "Project.Compile",
                    "Compile failed: " + m_compileLog);
}

bool Project::BreakCompatibility() {
  const CompatibleModeGuard guard(*this, CompatibleModes::BinaryCompatibility);
  SetCompatibleMode(CompatibleModes::NoCompatibility);
  NotifyProgress("Breaking compatibility for " + Name());
  return CompileOnce();
}

bool Project::CompileOnce() {
  if (!m_file.Exists()) {
    Refuse(automation::kInvalidValue, "Project.Compile", "Projet path is incorrect");
  }
  {
    // A fix-up of the mode is for this one compile.
    const CompatibleModeGuard guard(*this, CompatibleMode());
    UpdateFileForCompile();
    if (mSettings::MakeFilesWriteable()) MakeBinariesWriteable();
    RunCompiler();
  }
  if (m_compileLog.find("succeeded") == std::string::npos) return false;
  Succeed();
  return true;
}

void Project::UpdateFileForCompile() {
  m_file.OpenFile();
  try {
    WriteReferences();
    CheckPathToBinaryComponent();
    FixUpCompatibility();
    WriteSettings();
    m_file.Save();
  } catch (...) {
    m_file.DropContent();
    throw;
  }
  m_file.DropContent();
}

void Project::CheckPathToBinaryComponent() {
  if (Ports().files->FolderExists(FolderPart(CompletedPath()))) return;
  automation::Raise(automation::kInvalidValue, "Project.CheckPathToBinaryComponent",
                    "The path to the binary component does not exist!");
}

void Project::FixUpCompatibility() {
  const std::string_view compatible = QuotedText(Setting::CompatibleEXE32);
  if (!ISActiveX() || compatible.empty()) return;
  const std::string path = AbsolutePath(Folder(), compatible);
  if (Ports().files->FileExists(path)) return;
  SetCompatibleMode(CompatibleModes::NoCompatibility);
  NotifyProgress("The binary compatible file: " + path +
                 " was not found. Compatible mode changed to no compatibility.\r\n");
}

void Project::MakeBinariesWriteable() {
  const std::string folder(FolderPart(FullPath32()));
  const auto entries = Ports().files->List(folder);
  for (const char* extension : kBinaryExtensions) {
    for (const auto& entry : entries) {
      const bool isOne = !entry.isFolder && automation::Lower(entry.name).ends_with(extension);
      if (isOne) Ports().files->SetAttributes(folder + entry.name, platform::kNormal);
    }
  }
}

std::string Project::CompileCommand(const std::string& log) const {
  const ProjectTypes type = ProjectType();
  const bool isProgram = type == ProjectTypes::StandardExe || type == ProjectTypes::ActiveXExe;
  return automation::Joined({mSettings::VBExe(), " ", QuotePath(m_file.PathName()),
                             isProgram ? " /make /out " : " /makedll /out ", log});
}

void Project::RunCompiler() {
  clFile log;
  log.SetFile(Ports().system->TemporaryFolder() + kLogName);
  log.DeleteFileWithOutError();
  modExecute::CmdExec(CompileCommand(log.PathName()));
  log.OpenFile();
  m_compileLog = log.Content();
  log.CloseFile();
}

void Project::Succeed() {
  m_compiledOK = true;
  m_record.lastCompiled = Ports().clock->Now();
  m_isDirty = true;
  BeginEdit();
  ApplyEdit();
  if (ISActiveX()) Register();
  CheckInAfterCompile();
}

void Project::NotifyProgress(const std::string& text) {
  automation::Variant cancel = automation::Variant::FromBoolean(false);
  ParentBuild().RaiseScriptNotify(text, cancel, 0);
}

}  // namespace hearthmake
