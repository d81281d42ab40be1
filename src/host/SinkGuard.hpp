#pragma once

#include "build/Build.hpp"

namespace hearthmake::host {

// A sink stays in the build for as long as this lives, whatever happens in between.
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

}  // namespace hearthmake::host
