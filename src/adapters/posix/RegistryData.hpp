#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Registry.hpp"

// What the text formats of the registry have in common.
namespace hearthmake::posix {

// A value from the bytes that Windows keeps for it (texts in UTF-16 with their zeros).
platform::RegistryValue DecodeRegistryValue(std::uint32_t type, std::string_view bytes);
// The bytes that Windows keeps for a value.
std::string EncodeRegistryValue(const platform::RegistryValue& value);

platform::RegistryValue DWordValue(std::uint32_t number);

bool IsTextType(platform::RegistryType type);
// A MultiString in the port's form: every part, also the last one, is followed by one zero byte.
std::string NormalizeMultiString(std::string parts);

// `01,ff,…` with blanks, line ends and continuation marks between; nothing when there is junk.
std::optional<std::string> ParseHexBytes(std::string_view text);
// Appends the bytes in that form, continued on further lines when they do not fit on the one that
// the text ends with.
void AppendHexBytes(std::string& text, std::string_view bytes);
// A number of 1 to 8 hexadecimal digits.
std::optional<std::uint32_t> ParseHexNumber(std::string_view digits);

// The type number of `hex:` and `hex(7):`, which is taken off the front; nothing when it is neither.
std::optional<std::uint32_t> TakeHexType(std::string_view& text);
std::string HexTypePrefix(platform::RegistryType type);

}  // namespace hearthmake::posix
