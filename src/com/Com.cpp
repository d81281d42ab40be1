#include "com/Com.hpp"

#include "adapters/win32/WideText.hpp"

namespace hearthmake::com {

GUID ParseGuid(std::string_view text) {
  GUID guid = {};
  if (FAILED(CLSIDFromString(win32::ToWide(text).c_str(), &guid))) return GUID{};
  return guid;
}

}  // namespace hearthmake::com
