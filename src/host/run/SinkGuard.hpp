#pragma once

#include "automation/Error.hpp"
#include "build/Build.hpp"
#include "build/BuildEvents.hpp"

namespace hearthmake::host {

// Keeps a sink in the build for as long as it lives, whatever happens in between.
class SinkGuard {
 public:
  SinkGuard(Build& build, BuildEvents& sink) : m_build(build), m_sink(sink) { build.AddSink(sink); }
  SinkGuard(const SinkGuard&) = delete;
  SinkGuard& operator=(const SinkGuard&) = delete;
  ~SinkGuard() { m_build.RemoveSink(m_sink); }

 private:
  Build& m_build;
  BuildEvents& m_sink;
};

// Ends the report of a run. One that can't be written has been told of by the run already.
inline void EndReport(Build& build, bool isSuccess) {
  try {
    build.StopReporting(isSuccess);
  } catch (const automation::Error&) {
    return;
  }
}

}  // namespace hearthmake::host
