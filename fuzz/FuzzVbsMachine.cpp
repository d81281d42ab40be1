#include <cstddef>
#include <cstdint>
#include <string_view>

#include "automation/Error.hpp"
#include "automation/Utf.hpp"
#include "support/ScriptHost.hpp"
#include "vbscript/Engine.hpp"

// Compiles and runs any text as a script, in a host that has no ports. Whatever it does, it must end: with
// an error, or when its steps are used up.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace hearthmake;
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  vbscript::ScriptHost host;
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
