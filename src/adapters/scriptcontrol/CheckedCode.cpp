#include "adapters/scriptcontrol/CheckedCode.hpp"

#include <algorithm>
#include <cctype>

#include "automation/Text.hpp"

namespace hearthmake::scriptcontrol {

namespace {

constexpr std::string_view kLeave = "Err.Raise &H8004B1F7 : ";
constexpr std::string_view kOption = "Option Explicit";

bool IsBlank(char c) { return c == ' ' || c == '\t'; }
bool IsLineEnd(char c) { return c == '\r' || c == '\n'; }

std::size_t SkipComment(std::string_view code, std::size_t at) {
  while (at < code.size() && !IsLineEnd(code[at])) ++at;
  return at;
}

// Where the first statement begins.
std::size_t FirstStatement(std::string_view code) {
  std::size_t at = 0;
  while (at < code.size()) {
    if (code[at] == '\'') {
      at = SkipComment(code, at);
    } else if (IsBlank(code[at]) || IsLineEnd(code[at]) || code[at] == ':') {
      ++at;
    } else {
      break;
    }
  }
  return at;
}

// The length of "Option Explicit", however it is spaced; 0 when the code does not begin with it.
std::size_t OptionLength(std::string_view code) {
  std::size_t at = 0;
  for (const char expected : kOption) {
    if (at == code.size()) return 0;
    if (expected == ' ') {
      if (!IsBlank(code[at])) return 0;
      while (at < code.size() && IsBlank(code[at])) ++at;
    } else if (!automation::EqualsIgnoreCaseAscii(code.substr(at++, 1), std::string_view(&expected, 1))) {
      return 0;
    }
  }
  const bool endsHere =
      at == code.size() || (std::isalnum(static_cast<unsigned char>(code[at])) == 0 && code[at] != '_');
  return endsHere ? at : 0;
}

}  // namespace

// "Option Explicit" must be the first statement; only that may stand before ours.
CheckedCode::CheckedCode(std::string_view code) {
  const std::size_t first = FirstStatement(code);
  const std::size_t option = OptionLength(code.substr(first));
  const std::size_t place = option == 0 ? 0 : first + option;
  m_text.append(code.substr(0, place));
  if (option != 0) m_text += " : ";
  m_text.append(kLeave).append(code.substr(place));
  m_line += static_cast<std::int32_t>(
      std::count(code.begin(), code.begin() + static_cast<std::ptrdiff_t>(place), '\n'));
}

std::int32_t CheckedCode::ColumnsBefore(std::int32_t line) const {
  if (line != m_line) return 0;
  const bool isBehindOption = m_text.find(kLeave) != 0;
  return static_cast<std::int32_t>(kLeave.size() + (isBehindOption ? 3 : 0));
}

}  // namespace hearthmake::scriptcontrol
