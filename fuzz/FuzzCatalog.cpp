#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "adapters/catalog/CatalogJson.hpp"
#include "automation/Error.hpp"

using hearthmake::catalog::ParseCatalog;
using hearthmake::catalog::PrintCatalog;

// A catalog that can be read is the same when it was printed and read again; all else is refused.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  std::string printed;
  try {
    printed = PrintCatalog(ParseCatalog(text, "catalog.json"));
  } catch (const hearthmake::automation::Error& error) {
    if (error.Number() != hearthmake::automation::kInvalidValue) std::abort();
    return 0;
  }
  if (PrintCatalog(ParseCatalog(printed, "printed.json")) != printed) std::abort();
  return 0;
}
