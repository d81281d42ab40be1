#include "adapters/win32/WideText.hpp"

#include "automation/Utf.hpp"

namespace hearthmake::win32 {

static_assert(sizeof(wchar_t) == sizeof(char16_t));

std::wstring ToWide(std::string_view text) {
  const std::u16string units = automation::Utf8ToUtf16(text);
  return std::wstring(units.begin(), units.end());
}

std::string ToUtf8(std::wstring_view text) {
  const std::u16string units(text.begin(), text.end());
  return automation::Utf16ToUtf8(units);
}

}  // namespace hearthmake::win32
