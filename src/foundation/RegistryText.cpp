#include "foundation/RegistryText.hpp"

#include "automation/Text.hpp"
#include "automation/Utf.hpp"
#include "foundation/Apartment.hpp"

namespace hearthmake {

namespace {

// A value and its final zero must fit into the buffer.
constexpr std::size_t kBufferSize = 1024;

std::string DwordText(std::string_view bytes, std::string result) {
  for (std::size_t i = bytes.size(); i > 0; --i) {
    result += automation::Hex(static_cast<unsigned char>(bytes[i - 1]));
  }
  return automation::Decimal(static_cast<std::int32_t>(automation::Val("&h" + result)));
}

}  // namespace

bool GetRegistryValue(platform::RegistryRoot root, std::string_view key, std::string_view valueName,
                      std::string& result) {
  const auto value = Ports().registry->Query(root, key, valueName);
  const bool fits = value && automation::Utf8ToWindows1252(value->data).size() < kBufferSize;
  if (!fits) {
    result.clear();
    return false;
  }
  if (value->type == platform::RegistryType::String) {
    result = value->data;
  } else if (value->type == platform::RegistryType::DWord) {
    std::string_view bytes = value->data;
    // The last byte returned is dropped when it is zero: it was made for the end of a text.
    if (!bytes.empty() && bytes.back() == '\0') bytes.remove_suffix(1);
    result = DwordText(bytes, result);
  }
  return true;
}

}  // namespace hearthmake
