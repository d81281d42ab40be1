#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "adapters/posix/IniText.hpp"
#include "automation/Error.hpp"

using hearthmake::posix::IniText;

// The text is read, changed, printed and read again: what it holds must be the same then. The value
// that is stored is the text itself.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  try {
    IniText ini(text, "fuzz.ini");
    ini.Set("Hearthmake", "VB", text.substr(0, 20), text);
    ini.Remove("Hearthmake", "VB", "x");
    const IniText again(ini.Print(), "printed.ini");
    if (again.GetAll("Hearthmake", "VB") != ini.GetAll("Hearthmake", "VB")) std::abort();
  } catch (const hearthmake::automation::Error&) {
  }
  IniText fresh;
  fresh.Set(text, text, text, text);
  if (IniText(fresh.Print()).GetAll(text, text) != hearthmake::platform::SettingPairs{{text, text}})
    std::abort();
  return 0;
}
