#include "adapters/typelib/TypeLib.hpp"

#include "adapters/typelib/MsftTypeLib.hpp"
#include "adapters/typelib/SltgTypeLib.hpp"

namespace hearthmake::typelib {

std::unique_ptr<TypeLib> TypeLib::Recognize(const ByteView& bytes) {
  constexpr std::uint16_t kMagicSize = 4;
  if (bytes.Size() < kMagicSize) return nullptr;
  const std::string magic = bytes.Bytes(0, kMagicSize, "the type library's header");
  if (magic == "MSFT") return std::make_unique<MsftTypeLib>(bytes);
  if (magic == "SLTG") return std::make_unique<SltgTypeLib>(bytes);
  return nullptr;
}

}  // namespace hearthmake::typelib
