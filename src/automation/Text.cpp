#include "automation/Text.hpp"

#include <array>
#include <charconv>
#include <cmath>

#include "automation/Utf.hpp"

namespace hearthmake::automation {

namespace {

char LowerAscii(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

char32_t LowerCodePoint(char32_t c) {
  if (c < 0x80) return c >= U'A' && c <= U'Z' ? c + 32 : c;
  if (c >= 0xC0 && c <= 0xDE && c != 0xD7) return c + 32;
  if (c == 0x178) return 0xFF;  // Ÿ, whose small letter is in Latin-1
  if ((c >= 0x100 && c <= 0x137) || (c >= 0x14A && c <= 0x177)) return c | 1;
  if ((c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17E)) return (c & 1) != 0 ? c + 1 : c;
  if (c >= 0x391 && c <= 0x3A9 && c != 0x3A2) return c + 32;
  if (c >= 0x410 && c <= 0x42F) return c + 32;
  if (c >= 0x400 && c <= 0x40F) return c + 80;
  return c;
}

double ReadHex(std::string_view digits) {
  std::uint32_t value = 0;
  std::size_t count = 0;
  while (count < digits.size() && count < 8) {
    const char c = LowerAscii(digits[count]);
    if (!((c >= '0' && c <= '9') || (c >= 'a' && c <= 'f'))) break;
    value = value * 16 + static_cast<std::uint32_t>(c <= '9' ? c - '0' : c - 'a' + 10);
    ++count;
  }
  const bool isLong = count < digits.size() && digits[count] == '&';
  if (value <= 0xFFFF && count <= 4 && !isLong) return static_cast<std::int16_t>(value);
  return static_cast<std::int32_t>(value);
}

}  // namespace

std::string_view Trim(std::string_view text) {
  const auto first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::size_t Length(std::string_view text) {
  if (IsAscii(text)) return text.size();
  std::size_t count = 0;
  for (; !text.empty(); ++count) text.remove_prefix(Utf8SequenceLength(text));
  return count;
}

std::string_view Left(std::string_view text, std::size_t count) {
  if (text.size() <= count) return text;
  if (IsAscii(text.substr(0, count))) return text.substr(0, count);
  std::size_t bytes = 0;
  for (std::size_t n = 0; n < count && bytes < text.size(); ++n)
    bytes += Utf8SequenceLength(text.substr(bytes));
  return text.substr(0, bytes);
}

std::string_view Right(std::string_view text, std::size_t count) {
  return text.size() <= count ? text : text.substr(text.size() - count);
}

std::string Lower(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  if (IsAscii(text)) {
    for (const char c : text) result.push_back(LowerAscii(c));
    return result;
  }
  while (!text.empty()) {
    const std::size_t length = Utf8SequenceLength(text);
    if (length == 1) {
      result.push_back(LowerAscii(text.front()));
    } else {
      AppendUtf8(result, LowerCodePoint(DecodeUtf8(text)));
    }
    text.remove_prefix(length);
  }
  return result;
}

std::string Upper(std::string_view text) {
  std::string result(text);
  for (char& c : result) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 32);
  }
  return result;
}

bool EqualsIgnoreCaseAscii(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (LowerAscii(a[i]) != LowerAscii(b[i])) return false;
  }
  return true;
}

bool EqualsIgnoreCase(std::string_view a, std::string_view b) {
  if (EqualsIgnoreCaseAscii(a, b)) return true;
  if (IsAscii(a) && IsAscii(b)) return false;
  return Lower(a) == Lower(b);
}

std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to) {
  std::string result;
  if (from.empty()) return std::string(text);
  std::size_t position = 0;
  for (std::size_t hit = text.find(from); hit != std::string_view::npos; hit = text.find(from, position)) {
    result.append(text.substr(position, hit - position)).append(to);
    position = hit + from.size();
  }
  return result.append(text.substr(position));
}

double Val(std::string_view text) {
  std::string digits;
  for (const char c : text) {
    if (c != ' ' && c != '\t') digits.push_back(c);
  }
  if (digits.size() > 2 && digits[0] == '&' && LowerAscii(digits[1]) == 'h') {
    return ReadHex(std::string_view(digits).substr(2));
  }
  const char* begin = digits.data();
  const char* end = begin + digits.size();
  if (begin != end && *begin == '+') ++begin;
  // from_chars also reads words ("inf", "nan"), which are no numbers here.
  const char* first = begin == digits.data() && begin != end && *begin == '-' ? begin + 1 : begin;
  if (first == end || !((*first >= '0' && *first <= '9') || *first == '.')) return 0;
  double value = 0;
  const auto [stop, error] = std::from_chars(begin, end, value);
  if (error == std::errc::result_out_of_range) {
    const bool isTiny = std::string_view(begin, static_cast<std::size_t>(stop - begin)).find('-', 1) !=
                        std::string_view::npos;
    return isTiny ? 0 : HUGE_VAL;
  }
  return error == std::errc() ? value : 0;
}

std::string Decimal(std::int32_t value) { return std::to_string(value); }

std::string Hex(std::int32_t value) {
  std::array<char, 8> buffer{};
  const auto [end, error] =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), static_cast<std::uint32_t>(value), 16);
  std::string text(buffer.data(), end);
  for (char& c : text) {
    if (c >= 'a' && c <= 'f') c = static_cast<char>(c - 32);
  }
  return text;
}

}  // namespace hearthmake::automation
