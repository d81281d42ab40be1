// A group file, and that the paths read from it lead to themselves when a group lists them.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "MemoryApartment.hpp"
#include "automation/Error.hpp"
#include "automation/Utf.hpp"
#include "project/ProjectGroup.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr const char* kPath = "C:\\src\\fuzz.vbg";
  static hearthmake::fuzz::MemoryApartment apartment;
  apartment.Files().Replace(kPath, std::string(reinterpret_cast<const char*>(data), size));
  const auto projects = hearthmake::ReadProjectGroup(kPath);
  std::string rows = "VBGROUP 5.0\r\n";
  for (const std::string& project : projects) rows += "Project=\"" + project + "\"\r\n";
  apartment.Files().Replace(kPath, hearthmake::automation::Utf8ToWindows1252(rows));
  if (hearthmake::ReadProjectGroup(kPath) != projects) std::abort();
  return 0;
}
