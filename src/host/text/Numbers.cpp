#include "host/text/Numbers.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>

#include "automation/Text.hpp"
#include "host/HostError.hpp"

namespace hearthmake::host {

namespace {

template <class T>
bool ReadWhole(std::string_view digits, int base, T& value) {
  const char* end = digits.data() + digits.size();
  const auto result = std::from_chars(digits.data(), end, value, base);
  return result.ec == std::errc() && result.ptr == end;
}

}  // namespace

std::int32_t ParseLong(std::string_view text, std::string_view what) {
  const std::string_view prefix = text.substr(0, 2);
  if (automation::EqualsIgnoreCaseAscii(prefix, "&H") || automation::EqualsIgnoreCaseAscii(prefix, "0x")) {
    std::string_view digits = text.substr(2);
    if (prefix[0] == '&' && digits.ends_with('&')) digits.remove_suffix(1);
    std::uint32_t bits = 0;
    if (ReadWhole(digits, 16, bits)) return static_cast<std::int32_t>(bits);
  } else if (std::int32_t value = 0; ReadWhole(text, 10, value)) {
    return value;
  }
  throw HostError(fmt::format("'{}' is no number for {}.", text, what),
                  "Give a whole number: decimal, &H… or 0x… (32 bits).");
}

std::string AddressText(std::int32_t address) { return "&H" + automation::Hex(address); }

bool IsDigits(std::string_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

std::string Counted(std::size_t count, std::string_view noun) {
  return fmt::format("{} {}{}", count, noun, count == 1 ? "" : "s");
}

}  // namespace hearthmake::host
