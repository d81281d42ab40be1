#pragma once

#include <cstddef>
#include <list>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/SettingsStore.hpp"

namespace hearthmake::posix {

// The text of a settings file: sections `[Application\Section]` with lines `Key=Value`, comments
// behind `;` or `#`, blank lines. What is not changed keeps its line as it was typed.
//
// A value stands as it is, blanks at its ends not counted. One that would not come back that way is
// written in quotes, with quotes inside doubled, or, with control characters, as `escaped:"…"` with
// the escapes \n \r \t \" \\ and \xHH. Keys and the two parts of a section's name are written by the
// same rules where they need it. A value that begins with a quote and is no well-formed quoted text
// (`"C:\VB6.EXE" "%1"`) stands as it is.
class IniText {
 public:
  // Bytes in UTF-8, UTF-16 with a byte order mark, or Windows-1252. Junk is error 45, source
  // "SettingsStore", text "<name>, line <n>: what is wrong".
  explicit IniText(std::string bytes = {}, const std::string& name = {});
  IniText(IniText&&) = default;
  IniText& operator=(IniText&&) = default;
  IniText(const IniText&) = delete;  // the settings point to their lines
  IniText& operator=(const IniText&) = delete;

  platform::SettingPairs GetAll(std::string_view application, std::string_view section) const;
  // True when that changed something.
  bool Set(std::string_view application, std::string_view section, std::string_view key,
           std::string_view value);
  bool Remove(std::string_view application, std::string_view section, std::string_view key);
  std::string Print() const;

 private:
  using Line = std::list<std::string>::iterator;
  // Of several lines with one key the last one counts.
  struct Setting {
    std::string key;
    std::string value;
    std::vector<Line> lines;
  };
  struct Section {
    std::vector<Setting> settings;             // in the order of their first lines
    std::map<std::string, std::size_t> byKey;  // folded key to its place in settings
    Line last;                                 // new settings go behind it
  };
  using SectionName = std::pair<std::string, std::string>;  // both parts folded

  void Parse(std::string_view text, const std::string& name);
  const Section* Find(std::string_view application, std::string_view section) const;
  Section& Make(std::string_view application, std::string_view section);
  static void Put(Section& section, std::string key, std::string value, Line line);

  std::string m_lineEnd = "\n";
  std::list<std::string> m_lines;
  std::map<SectionName, Section> m_sections;
};

}  // namespace hearthmake::posix
