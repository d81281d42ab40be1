#pragma once

#include <map>
#include <optional>
#include <string>

#include "host/Session.hpp"
#include "host/page/LastRun.hpp"
#include "host/page/RunFacts.hpp"
#include "host/run/RunPlan.hpp"
#include "host/run/RunRecord.hpp"

namespace hearthmake::host {

// Follows a run for its page, and remembers it for the next one's.
class PageReport {
 public:
  // Before the run; session and build must outlive it.
  PageReport(Session& session, Build& build) : m_session(session), m_build(build) {}

  // Why the projects of the run are compiled.
  void Expect(const RunPlan& plan);
  // What is to hear the events of the run.
  BuildEvents& Facts() { return m_facts; }

  // The page, after the run.
  std::string Text(const RunRecord& record);
  // Keeps in the data folder what the next page compares with, once there was a page. That it can't be kept
  // is told.
  void Remember();

 private:
  std::string MemoryPath();

  Session& m_session;
  Build& m_build;
  RunFacts m_facts;
  std::map<std::int32_t, std::string> m_reasons;  // by project; of those that are compiled
  std::optional<LastRun> m_run;
};

}  // namespace hearthmake::host
