#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "build/Build.hpp"
#include "build/BuildEvents.hpp"
#include "host/run/RunDisplay.hpp"
#include "host/run/RunPlan.hpp"

namespace hearthmake::host {

// What became of a project in a run.
enum class ProjectOutcome {
  NotReached,  // the run ended before its turn
  Compiled,
  Failed,
  Cancelled,  // the run was cancelled at it
  UpToDate,   // nothing that it is made of has changed
  Blocked,    // it needs one that failed
  Earlier,    // it had compiled before the run was resumed
  NotWanted,  // it is not to be compiled, by its CompileMe or by whoever started the run
};

struct ProjectRecord {
  std::int32_t id = 0;
  std::string name;
  std::string type;    // as ProjectType names it; empty when that can't be read
  std::string path;    // of the project file, a DOS path
  std::string binary;  // DOS path
  ProjectOutcome outcome = ProjectOutcome::NotReached;
  double start = 0;             // seconds since the run began
  double seconds = 0;           // that it took; 0 without a start
  std::string message;          // of a failure, as the event told it
  bool isCompileError = false;  // the compiler refused it, and message is its log behind "Compile failed: "
  std::string log;              // what the compiler wrote, cut off at RunRecord::kTextLimit bytes
  std::string reason;           // why it was left out
};

// Something that the run told besides.
struct RunMessage {
  enum class Kind { Error, ScriptNotify, MTSEvent };
  Kind kind = Kind::ScriptNotify;
  std::string text;
  double seconds = 0;          // since the run began
  std::int32_t idProject = 0;  // the project at work; 0 for none
};

// A run on record, for those who write about it when it is over. Several runs may follow each other on one
// record, as when the rest is built after a failure: a project's last outcome counts, and failures stay.
class RunRecord final : public BuildEvents {
 public:
  // Texts beyond this are cut off.
  static constexpr std::size_t kTextLimit = std::size_t{256} * 1024;
  // A script that tells more than this is counted, not kept.
  static constexpr std::size_t kMessageLimit = 10'000;

  // Takes the projects in list order, which is to be the compile order by now. The build stays alive.
  explicit RunRecord(Build& build);

  // Why a project takes no part; an outcome that it has by now stays, but for NotReached and NotWanted.
  void LeaveOut(std::int32_t idProject, ProjectOutcome outcome, std::string reason);
  // The same for all that the plan leaves out.
  void LeaveOut(const RunPlan& plan);
  // The run is over; without it, it ends with its last failure or completion.
  void End() { EndNow(); }
  // A failure outside of the run's own events.
  void Fail(const std::string& message);

  const std::string& BuildName() const { return m_buildName; }
  std::int32_t BuildId() const { return m_buildId; }
  const std::vector<ProjectRecord>& Projects() const { return m_projects; }
  std::size_t Count(ProjectOutcome outcome) const;
  const std::vector<RunMessage>& Messages() const { return m_messages; }
  // How many messages came beyond the limit.
  std::size_t LostMessages() const { return m_lostMessages; }
  // Failures that belong to no project, or to one that had failed already.
  const std::vector<std::string>& Failures() const { return m_failures; }

  // When the first run began and the last one ended, by the clock on the wall.
  std::chrono::system_clock::time_point Began() const { return m_began; }
  std::chrono::system_clock::time_point Ended() const { return m_ended; }
  // From begin to end, by a clock that nobody sets.
  double Seconds() const { return m_seconds; }
  // Cancelled also when no run has begun.
  RunResult Result() const;

  void BuildStart(bool bResume) override;
  void WillCompile(Project& objProject, bool& bCancel) override;
  void ProjectCompiled(Project& objProject) override;
  void BuildFaild(Project* objProject, const std::string& strMessage, bool bCompileError) override;
  void BuildCancled(Project& objProject) override;
  void BuildComplete() override;
  void MTSEvent(const std::string& strInfo, bool& Cancel) override;
  void Error(const automation::Variant& strMessage) override;
  void ScriptNotify(const std::string& strMessage, automation::Variant& Cancel,
                    std::int32_t Progress) override;

 private:
  using Clock = std::chrono::steady_clock;

  ProjectRecord& Of(Project& project);
  void Add(Project& project);
  void Tell(RunMessage::Kind kind, const std::string& text);
  void AddFailure(const std::string& message);
  double Now() const;
  void EndNow();

  std::string m_buildName;
  std::int32_t m_buildId;
  std::vector<ProjectRecord> m_projects;
  std::vector<RunMessage> m_messages;
  std::vector<std::string> m_failures;
  std::size_t m_lostMessages = 0;
  std::int32_t m_current = 0;  // the project at work
  bool m_hasBegun = false;
  bool m_isComplete = false;  // of the last run
  bool m_isCancelled = false;
  std::chrono::system_clock::time_point m_began = std::chrono::system_clock::now();
  std::chrono::system_clock::time_point m_ended = m_began;
  Clock::time_point m_start = Clock::now();
  double m_seconds = 0;
};

}  // namespace hearthmake::host
