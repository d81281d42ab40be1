#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "host/HostError.hpp"
#include "host/moving/BuildJson.hpp"

using hearthmake::host::ParseBuild;
using hearthmake::host::PrintBuild;

// An exported build that can be read is the same when it was printed and read again; all else is refused.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string printed;
  try {
    printed = PrintBuild(ParseBuild({reinterpret_cast<const char*>(data), size}));
  } catch (const hearthmake::host::HostError&) {
    return 0;
  }
  if (PrintBuild(ParseBuild(printed)) != printed) std::abort();
  return 0;
}
