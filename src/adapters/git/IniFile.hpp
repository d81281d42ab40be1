#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace hearthmake::git {

// What a database's ini file says: sections with lines `Key = Value`, comments behind `;` or `#`. Names of
// sections and keys are compared without regard to case; lines that are none of these are passed over, as
// such files come from other programs. Text is UTF-8, or Windows-1252 when it is no UTF-8.
class IniFile {
 public:
  using Pairs = std::vector<std::pair<std::string, std::string>>;

  explicit IniFile(std::string_view bytes);

  // The lines of a section in their order, of all its parts when it occurs more than once; none when there
  // is no such section.
  const Pairs& Section(std::string_view name) const;
  // The last value of the key; "" when there is none.
  std::string Value(std::string_view section, std::string_view key) const;

 private:
  void Read(std::string_view line, Pairs*& current);
  Pairs& Make(std::string_view name);

  std::vector<std::pair<std::string, Pairs>> m_sections;
};

}  // namespace hearthmake::git
