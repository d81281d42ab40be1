#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace hearthmake::scriptcontrol {

// VBScript code that compiles as what it was made from, but is left before its first statement, by an error.
// Lines keep their numbers.
class CheckedCode {
 public:
  static constexpr std::int32_t kLeft = static_cast<std::int32_t>(0x8004B1F7);  // the error's number

  explicit CheckedCode(std::string_view code);

  const std::string& Text() const { return m_text; }
  // How many columns were put into a line (counted from 1), before anything that may be wrong in it.
  std::int32_t ColumnsBefore(std::int32_t line) const;

 private:
  std::string m_text;
  std::int32_t m_line = 1;  // of the statement that leaves
};

}  // namespace hearthmake::scriptcontrol
