// Type libraries in both formats, as they stand alone in a file.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "adapters/typelib/TypeLibFileReader.hpp"
#include "automation/Error.hpp"
#include "support/TypeLibFakeFiles.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto files = std::make_shared<hearthmake::test::TypeLibFakeFiles>();
  files->Put("C:\\fuzz.tlb", std::string(reinterpret_cast<const char*>(data), size));
  hearthmake::typelib::TypeLibFileReader reader(files);
  try {
    reader.Read("C:\\fuzz.tlb");
  } catch (const hearthmake::automation::Error&) {
  }
  try {
    reader.ReadTypes("C:\\fuzz.tlb");
  } catch (const hearthmake::automation::Error&) {
  }
  return 0;
}
