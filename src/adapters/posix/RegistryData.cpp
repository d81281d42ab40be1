#include "adapters/posix/RegistryData.hpp"

#include <charconv>
#include <utility>

#include "adapters/posix/TextEncoding.hpp"

namespace hearthmake::posix {

using platform::RegistryType;
using platform::RegistryValue;

namespace {

constexpr std::string_view kDigits = "0123456789abcdef";
constexpr std::size_t kLineWidth = 76;

int DigitValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

}  // namespace

RegistryValue DecodeRegistryValue(std::uint32_t type, std::string_view bytes) {
  RegistryValue value{static_cast<RegistryType>(type), {}};
  if (!IsTextType(value.type)) {
    value.data = bytes;
    return value;
  }
  value.data = Utf8FromUtf16(bytes);
  if (value.type == RegistryType::MultiString) {
    value.data = NormalizeMultiString(std::move(value.data));
  } else if (value.data.ends_with('\0')) {
    value.data.pop_back();
  }
  return value;
}

std::string EncodeRegistryValue(const RegistryValue& value) {
  if (!IsTextType(value.type)) return value.data;
  return Utf16FromUtf8(value.data + '\0');
}

RegistryValue DWordValue(std::uint32_t number) {
  RegistryValue value{RegistryType::DWord, {}};
  for (int shift = 0; shift < 32; shift += 8) value.data += static_cast<char>(number >> shift & 0xFF);
  return value;
}

bool IsTextType(RegistryType type) {
  return type == RegistryType::String || type == RegistryType::ExpandString ||
         type == RegistryType::MultiString;
}

std::string NormalizeMultiString(std::string parts) {
  using namespace std::string_view_literals;
  if (parts == "\0"sv) return {};
  if (parts.ends_with("\0\0"sv)) parts.pop_back();
  if (!parts.empty() && !parts.ends_with('\0')) parts += '\0';
  return parts;
}

std::optional<std::string> ParseHexBytes(std::string_view text) {
  std::string bytes;
  bytes.reserve(text.size() / 3 + 1);
  int pending = -1;  // the first digit of a byte, or -1
  bool digitMayFollow = true;
  const auto finish = [&] {
    if (pending >= 0) bytes += static_cast<char>(pending);
    pending = -1;
  };
  for (const char c : text) {
    const int digit = DigitValue(c);
    if (digit >= 0) {
      if (!digitMayFollow) return std::nullopt;
      digitMayFollow = pending < 0;
      pending = pending < 0 ? digit : pending << 4 | digit;
      if (!digitMayFollow) finish();
    } else if (c == ',') {
      finish();
      digitMayFollow = true;
    } else if (c != ' ' && c != '\t' && c != '\r' && c != '\n' && c != '\\') {
      return std::nullopt;
    }
  }
  finish();
  return bytes;
}

void AppendHexBytes(std::string& text, std::string_view bytes) {
  std::size_t column = text.size() - (text.rfind('\n') + 1);  // npos + 1 is 0
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const auto byte = static_cast<unsigned char>(bytes[i]);
    text += kDigits[byte >> 4];
    text += kDigits[byte & 15];
    column += 3;
    if (i + 1 == bytes.size()) break;
    text += ',';
    if (column > kLineWidth) {
      text += "\\\n  ";
      column = 2;
    }
  }
}

std::optional<std::uint32_t> ParseHexNumber(std::string_view digits) {
  std::uint32_t number = 0;
  const char* const end = digits.data() + digits.size();
  const auto [stop, error] = std::from_chars(digits.data(), end, number, 16);
  if (digits.empty() || digits.size() > 8 || stop != end || error != std::errc()) return std::nullopt;
  return number;
}

std::optional<std::uint32_t> TakeHexType(std::string_view& text) {
  if (text.starts_with("hex:")) {
    text.remove_prefix(4);
    return static_cast<std::uint32_t>(RegistryType::Binary);
  }
  if (!text.starts_with("hex(")) return std::nullopt;
  const std::size_t close = text.find("):");
  if (close == std::string_view::npos) return std::nullopt;
  const auto type = ParseHexNumber(text.substr(4, close - 4));
  if (type) text.remove_prefix(close + 2);
  return type;
}

std::string HexTypePrefix(RegistryType type) {
  if (type == RegistryType::Binary) return "hex:";
  char digits[9] = {};
  const auto end =
      std::to_chars(digits, digits + sizeof digits - 1, static_cast<std::uint32_t>(type), 16).ptr;
  return "hex(" + std::string(digits, end) + "):";
}

}  // namespace hearthmake::posix
