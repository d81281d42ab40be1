#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "adapters/posix/WineHive.hpp"
#include "automation/Error.hpp"

using hearthmake::platform::RegistryType;
using hearthmake::posix::WineHive;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text =
      "WINE REGISTRY Version 2\n" + std::string(reinterpret_cast<const char*>(data), size);
  try {
    WineHive hive(text, "fuzz.reg");
    if (hive.Print() != text) std::abort();
    std::vector<std::string> pending = {""};
    for (std::size_t count = 0; !pending.empty() && count < 1000; ++count) {
      const std::string key = pending.back();
      pending.pop_back();
      for (const std::string& name : hive.ValueNames(key)) hive.Query(key, name);
      for (const std::string& name : hive.SubKeys(key)) pending.push_back(key + "\\" + name);
      hive.Set(key + "\\fuzz", "v", {RegistryType::String, "x"});
      hive.Set(key, "v", {RegistryType::Binary, "x"});
      hive.RemoveValue(key, "w");
    }
    WineHive again(hive.Print(), "again.reg");
  } catch (const hearthmake::automation::Error&) {
  }
  return 0;
}
