#include "adapters/typelib/TypeLibText.hpp"

#include <cstddef>
#include <utility>

#include "automation/Utf.hpp"

namespace hearthmake::typelib {

std::string FormatGuid(const GuidBytes& guid) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  // The first three groups are little-endian numbers, the rest are bytes in their order.
  constexpr std::array<unsigned, 16> kOrder = {3, 2, 1, 0, 5, 4, 7, 6, 8, 9, 10, 11, 12, 13, 14, 15};
  std::string text(kNullGuid);
  std::size_t place = 1;
  for (std::size_t i = 0; i < kOrder.size(); ++i) {
    if (text[place] == '-') ++place;
    text[place++] = kDigits[guid[kOrder[i]] >> 4];
    text[place++] = kDigits[guid[kOrder[i]] & 0xF];
  }
  return text;
}

std::string DecodeText(std::string bytes) {
  return automation::IsAscii(bytes) ? std::move(bytes) : automation::Windows1252ToUtf8(bytes);
}

}  // namespace hearthmake::typelib
