#include "foundation/RegistryText.hpp"

#include "automation/Text.hpp"
#include "automation/Utf.hpp"
#include "foundation/Apartment.hpp"

namespace hearthmake {

namespace {

constexpr std::size_t kBufferSize = 1024;

// A text is read with its final zero.
bool FitsBuffer(const platform::RegistryValue& value) {
  const bool isText = value.type == platform::RegistryType::String ||
                      value.type == platform::RegistryType::ExpandString ||
                      value.type == platform::RegistryType::MultiString;
  if (!isText) return value.data.size() <= kBufferSize;
  return automation::Utf8ToWindows1252(value.data).size() < kBufferSize;
}

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
  if (!value || !FitsBuffer(*value)) {
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
