#include "host/run/RunDisplay.hpp"

#include <algorithm>

#include "host/system/Interrupt.hpp"
#include "project/Project.hpp"

namespace hearthmake::host {

namespace {

double SecondsSince(std::chrono::steady_clock::time_point start) {
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

}  // namespace

double RunDisplay::Seconds() const { return SecondsSince(m_start); }
double RunDisplay::ProjectSeconds() const { return SecondsSince(m_projectStart); }

void RunDisplay::GettingLatestVersion(SSProject& objSSProject, bool& bCancel) {
  if (Interrupt::IsRequested()) {
    bCancel = true;
    return;
  }
  ShowGetting(objSSProject);
}

void RunDisplay::TellFile(const SourceFile& file) {
  ++m_files[static_cast<std::size_t>(file.state)];
  ShowFile(file);
}

void RunDisplay::WillCompile(Project& objProject, bool& bCancel) {
  // A compiler that was through before the signal reached it leaves the run to be ended here.
  if (Interrupt::IsRequested()) {
    bCancel = true;
    return;
  }
  ++m_current;
  m_projectStart = Clock::now();
  ShowWillCompile(objProject);
}

void RunDisplay::ProjectCompiled(Project& objProject) {
  ++m_compiled;
  ShowCompiled(objProject);
}

void RunDisplay::BuildFaild(Project* objProject, const std::string& strMessage, bool bCompileError) {
  m_result = Interrupt::IsRequested() ? RunResult::Cancelled : RunResult::Failed;
  const PlannedProject* failed = objProject == nullptr ? nullptr : m_plan.Find(objProject->Id());
  // A script of failures that fails too comes as a second failure of the same project.
  const bool isNew = std::find(m_failed.begin(), m_failed.end(), failed) == m_failed.end();
  if (failed != nullptr && isNew) m_failed.push_back(failed);
  ShowFailed(objProject, strMessage, bCompileError);
}

std::vector<const PlannedProject*> RunDisplay::LeftOutBecauseOf(std::int32_t idProject) const {
  std::vector<const PlannedProject*> leftOut;
  for (const PlannedProject& planned : m_plan.Projects()) {
    if (planned.choice == RunChoice::AfterFailure && planned.cause == idProject) leftOut.push_back(&planned);
  }
  return leftOut;
}

void RunDisplay::BuildCancled(Project& objProject) {
  m_result = RunResult::Cancelled;
  ShowCancelled(objProject);
}

void RunDisplay::BuildComplete() {
  m_result = RunResult::Complete;
  ShowComplete();
}

}  // namespace hearthmake::host
