#include "vb6/Controls.hpp"

#include <chrono>
#include <cstdlib>
#include <thread>

#include "vb6/System.hpp"
#include "vb6/Text.hpp"

namespace hearthmake::vb6 {
namespace {

std::string Variable(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr ? value : "";
}

}  // namespace

Controls Controls::FromEnvironment() {
  Controls controls;
  controls.m_skipSources = Variable("VB6_STANDIN_SKIP_SOURCES") == "1";
  controls.m_skipReferences = Variable("VB6_STANDIN_SKIP_REFERENCES") == "1";
  controls.m_assumeSystemLibraries = Variable("VB6_STANDIN_SYSTEM_LIBRARIES") != "missing";
  if (std::string seed = Variable("VB6_STANDIN_SEED"); !seed.empty()) controls.m_seed = std::move(seed);
  controls.m_stubFolder = Variable("VB6_STANDIN_STUBS");
  controls.m_fail = Variable("VB6_STANDIN_FAIL");
  controls.m_break = Variable("VB6_STANDIN_BREAK");
  controls.m_crash = Variable("VB6_STANDIN_CRASH");
  controls.m_hang = Variable("VB6_STANDIN_HANG");
  controls.m_slow = Variable("VB6_STANDIN_SLOW");
  return controls;
}

bool Controls::Names(const std::string& list, std::string_view project) {
  if (list.empty()) return false;
  for (const std::string_view name : Split(list, ';')) {
    if (EqualNoCase(Trim(name), project)) return true;
  }
  return false;
}

// "250" holds for every project, "Name=250" for one.
unsigned Controls::MillisecondsFor(std::string_view project) const {
  unsigned milliseconds = 0;
  for (const std::string_view entry : Split(m_slow, ';')) {
    const std::size_t equals = entry.find('=');
    const bool isFor =
        equals == std::string_view::npos || EqualNoCase(Trim(entry.substr(0, equals)), project);
    const std::string_view number = equals == std::string_view::npos ? entry : entry.substr(equals + 1);
    if (isFor) milliseconds = ParseNumber(Trim(number)).value_or(milliseconds);
  }
  return milliseconds;
}

void Controls::Disturb(std::string_view project) const {
  if (const unsigned milliseconds = MillisecondsFor(project); milliseconds > 0) {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
  }
  if (Names(m_crash, project)) Crash();
  if (Names(m_hang, project)) Hang();
}

}  // namespace hearthmake::vb6
