#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include "automation/Error.hpp"
#include "automation/Utf.hpp"
#include "support/ScriptHost.hpp"
#include "vbscript/Engine.hpp"

namespace {

// A clock that stands still: the one port that the engine itself needs, and the same run for the same text.
class StoppedClock final : public hearthmake::platform::Clock {
 public:
  double Now() override { return 36975.545138888889; }  // 2001-03-25 13:05:00
  void Sleep(std::chrono::milliseconds /*duration*/) override {}
};

hearthmake::platform::Platform Ports() {
  hearthmake::platform::Platform ports;
  ports.clock = std::make_shared<StoppedClock>();
  return ports;
}

}  // namespace

// Compiles and runs any text as a script, in a host that has a clock and no other port. Whatever it does, it
// must end: with an error, or when its steps are used up.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace hearthmake;
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  vbscript::ScriptHost host(Ports());
  vbscript::Engine engine(host);
  engine.AddObject("Recorder", automation::Make<vbscript::Recorder>(), true);
  engine.LimitSteps(200'000);
  try {
    engine.AddCode(automation::Utf8ToUtf16(bytes));
  } catch (const automation::Error&) {
    // As good an end as any.
  }
  return 0;
}
