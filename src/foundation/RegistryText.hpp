#pragma once

#include <string>
#include <string_view>

#include "platform/Registry.hpp"

namespace hearthmake {

// Reads one registry value as text; an empty value name is the key's default value. A string gives its
// text, up to 1023 bytes. A DWORD gives the decimal text of its bytes, highest first, written as
// hexadecimal without leading zeros one after the other and behind the text that result held; so &H0102
// reads as 18. Other types leave result as it is. A missing key or value empties it and gives False.
bool GetRegistryValue(platform::RegistryRoot root, std::string_view key, std::string_view valueName,
                      std::string& result);

}  // namespace hearthmake
