#pragma once

#include <optional>
#include <string>

#include "host/RunRecord.hpp"
#include "host/Session.hpp"
#include "host/SinkGuard.hpp"
#include "host/page/LastRun.hpp"
#include "host/page/RunFacts.hpp"

namespace hearthmake::host {

// Writes the page of a run, and remembers the run for the next page.
class HtmlReport {
 public:
  // Before the run; the session and the build must outlive it. HostError when the page can't be written
  // there.
  HtmlReport(Session& session, Build& build, const std::string& file);

  // After the run.
  void Write(const RunRecord& record);

 private:
  std::string MemoryPath();

  Session& m_session;
  Build& m_build;
  std::string m_file;  // as it was typed
  RunFacts m_facts;
  SinkGuard m_sink;
};

}  // namespace hearthmake::host
