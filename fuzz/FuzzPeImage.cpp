// The way down an image's resource directory, with and without a resource number.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "adapters/typelib/PagedFile.hpp"
#include "adapters/typelib/PeImage.hpp"
#include "automation/Error.hpp"
#include "support/TypeLibFakeFiles.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using hearthmake::typelib::ByteView;
  using hearthmake::typelib::PagedFile;
  using hearthmake::typelib::PeImage;

  hearthmake::test::TypeLibFakeFiles files;
  files.Put("fuzz.dll", std::string(reinterpret_cast<const char*>(data), size));
  const auto file = files.Open("fuzz.dll");
  PagedFile pages(*file, "fuzz.dll");
  const ByteView view(pages);
  if (!PeImage::Recognize(view)) return 0;
  for (const std::optional<std::uint32_t> number :
       {std::optional<std::uint32_t>(), std::optional<std::uint32_t>(2)}) {
    try {
      PeImage(view).TypeLibrary(number);
    } catch (const hearthmake::automation::Error&) {
    }
  }
  return 0;
}
