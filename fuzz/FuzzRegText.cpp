#include <cstddef>
#include <cstdint>
#include <string>

#include "adapters/posix/RegText.hpp"
#include "automation/Error.hpp"

using hearthmake::posix::RegistryChange;
using hearthmake::posix::RegText;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string printed = RegText::Header();
  try {
    RegText::Parse(std::string(reinterpret_cast<const char*>(data), size), "fuzz.reg",
                   [&](const RegistryChange& change) {
                     if (change.kind == RegistryChange::Kind::MakeKey)
                       RegText::AppendKey(printed, "HKEY_USERS\\" + change.key);
                     if (change.kind == RegistryChange::Kind::SetValue)
                       RegText::AppendValue(printed, change.name, change.value);
                   });
  } catch (const hearthmake::automation::Error&) {
  }
  // What was read can be printed and read again; an error here is a find.
  RegText::Parse(printed, "printed.reg", [](const RegistryChange&) {});
  return 0;
}
