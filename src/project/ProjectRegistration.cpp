// Project: what happens to a binary after its compile, and opening the project for editing.

#include "automation/Error.hpp"
#include "build/Build.hpp"
#include "foundation/Apartment.hpp"
#include "foundation/Paths.hpp"
#include "foundation/mSettings.hpp"
#include "project/Project.hpp"

namespace hearthmake {

namespace {

using automation::Raise;

constexpr const char* kCompileErrorMark = "Compile Error in File";

// The first text between single quotes behind the mark; empty without one.
std::string QuotedBehind(const std::string& log, std::size_t mark) {
  const std::size_t open = log.find('\'', mark);
  if (open == std::string::npos) return {};
  const std::size_t close = log.find('\'', open + 1);
  return close == std::string::npos ? std::string() : log.substr(open + 1, close - open - 1);
}

}  // namespace

void Project::StartRegistration(const char* inProcess, const char* outOfProcess) {
  if (!ISActiveX()) return;
  const std::string binary = FullPath32();
  if (!Ports().files->FileExists(binary)) return;
  const std::string quoted = QuotePath(binary);
  Ports().shell->Start(IsInprocess() ? inProcess + quoted : quoted + outOfProcess,
                       platform::WindowState::MinimizedFocus);
}

void Project::Register() { StartRegistration("regsvr32.exe /S ", " /RegServer"); }

void Project::UnRegister() { StartRegistration("regsvr32.exe /S /U ", " /UnregServer"); }

void Project::RunProjectInVB() {
  Ports().shell->Start(mSettings::VBExe() + " " + QuotePath(ProjectPath()), platform::WindowState::Normal);
}

// The check-ins report what fails and never fail the compile.
void Project::CheckInAfterCompile() {
  if (CheckInVBPFile()) CheckIn(ProjectPath(), "Failed to check in the VBP file for project ");
  if (!CheckInBinaryFile()) return;
  constexpr const char* kBinaryFailed = "Failed to check in the binary file for project ";
  CheckIn(FullPath32(), kBinaryFailed);
  if (RemoteServerFiles()) CheckIn(RemoteServerFilePath(), kBinaryFailed);
}

void Project::CheckIn(const std::string& file, const char* failure) {
  std::string reason;
  if (!ParentBuild().SSProjects().CheckInFile(file, "", false, reason))
    NotifyProgress(failure + Name() + ". Reason: " + reason);
}

bool Project::DistributeBinaryFile() {
  if (CopyPath().empty()) return true;
  std::string source = FullPath32();
  try {
    CopyOut(source);
    if (RemoteServerFiles()) CopyOut(source = RemoteServerFilePath());
    return true;
  } catch (const automation::Error& error) {
    NotifyProgress("Failed to copy " + source + " to the following path: \r\n" + CopyPath() +
                   "\r\nError message: " + error.Description());
    return false;
  }
}

void Project::CopyOut(const std::string& source) const {
  clFile file;
  file.SetFile(source);
  std::string folder = CopyPath();
  file.Copy(folder);
}

std::string Project::LastCheckInInfo() {
  constexpr const char* kSource = "Project.LastCheckIn";
  if (m_compiledOK)
    Raise(automation::kInvalidValue, kSource, "This method can only be accessed when a build has failed!");
  const std::size_t mark = m_compileLog.find(kCompileErrorMark);
  if (mark == std::string::npos)
    Raise(automation::kInvalidValue, kSource, "This method can only be used for compile errors!");
  return ParentBuild().SSProjects().GetLastModifiedData(QuotedBehind(m_compileLog, mark));
}

}  // namespace hearthmake
