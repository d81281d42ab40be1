#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "build/BuildEvents.hpp"
#include "host/SourceFile.hpp"
#include "host/run/RunPlan.hpp"

namespace hearthmake::host {

enum class RunResult { Complete, Failed, Cancelled };

// Follows a run for the person or program that started it, and knows how it went.
class RunDisplay : public BuildEvents {
 public:
  // The plan stays alive; what it says of failures is read when they come.
  explicit RunDisplay(const RunPlan& plan) : m_plan(plan), m_total(plan.Count(RunChoice::Runs)) {}

  // Called several times a second while a compiler runs.
  virtual void Tick() {}
  // A file came from source control.
  void TellFile(const SourceFile& file);
  // No more files come.
  virtual void EndSources() {}
  // After the run.
  virtual void Finish() {}

  // How many files came to that.
  std::size_t Files(SourceFileState state) const { return m_files[static_cast<std::size_t>(state)]; }
  RunResult Result() const { return m_result; }

  void GettingLatestVersion(SSProject& objSSProject, bool& bCancel) final;
  void WillCompile(Project& objProject, bool& bCancel) final;
  void ProjectCompiled(Project& objProject) final;
  void BuildFaild(Project* objProject, const std::string& strMessage, bool bCompileError) final;
  void BuildCancled(Project& objProject) final;
  void BuildComplete() final;

 protected:
  // The events, after they were counted.
  virtual void ShowGetting(SSProject& source) = 0;
  virtual void ShowFile(const SourceFile& file) = 0;
  virtual void ShowWillCompile(Project& project) = 0;
  virtual void ShowCompiled(Project& project) = 0;
  virtual void ShowFailed(Project* project, const std::string& message, bool isCompileError) = 0;
  virtual void ShowCancelled(Project& project) = 0;
  virtual void ShowComplete() = 0;

  const RunPlan& Plan() const { return m_plan; }
  // Those that failed, in the order in which they did.
  const std::vector<const PlannedProject*>& FailedProjects() const { return m_failed; }
  // Those that were left out because of a project.
  std::vector<const PlannedProject*> LeftOutBecauseOf(std::int32_t idProject) const;
  std::size_t Total() const { return m_total; }
  // The place of the present project among those to compile, from 1.
  std::size_t Current() const { return m_current; }
  std::size_t Compiled() const { return m_compiled; }
  double Seconds() const;
  double ProjectSeconds() const;

 private:
  using Clock = std::chrono::steady_clock;

  const RunPlan& m_plan;
  std::vector<const PlannedProject*> m_failed;
  std::size_t m_total;
  std::size_t m_current = 0;
  std::size_t m_compiled = 0;
  std::array<std::size_t, 3> m_files{};  // by SourceFileState
  Clock::time_point m_start = Clock::now();
  Clock::time_point m_projectStart = m_start;
  RunResult m_result = RunResult::Cancelled;  // until the run says otherwise
};

}  // namespace hearthmake::host
