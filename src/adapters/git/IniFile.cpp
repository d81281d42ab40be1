#include "adapters/git/IniFile.hpp"

#include "adapters/git/Message.hpp"
#include "automation/Text.hpp"

namespace hearthmake::git {

namespace {

std::string_view Unquoted(std::string_view value) {
  const bool isQuoted = value.size() >= 2 && value.front() == '"' && value.back() == '"';
  return isQuoted ? value.substr(1, value.size() - 2) : value;
}

}  // namespace

IniFile::IniFile(std::string_view bytes) {
  constexpr std::string_view kMark = "\xEF\xBB\xBF";
  if (bytes.starts_with(kMark)) bytes.remove_prefix(kMark.size());
  const std::string decoded = ReadableText(bytes);
  std::string_view text = decoded;
  Pairs* current = nullptr;
  while (!text.empty()) {
    const std::size_t end = text.find_first_of("\r\n");
    Read(TrimBlanks(text.substr(0, end)), current);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  }
}

void IniFile::Read(std::string_view line, Pairs*& current) {
  if (line.empty() || line.front() == ';' || line.front() == '#') return;
  if (line.front() == '[') {
    const std::size_t end = line.rfind(']');
    current = end == std::string_view::npos ? nullptr : &Make(TrimBlanks(line.substr(1, end - 1)));
    return;
  }
  const std::size_t equals = line.find('=');
  if (current == nullptr || equals == std::string_view::npos) return;
  const std::string_view value = Unquoted(TrimBlanks(line.substr(equals + 1)));
  current->emplace_back(TrimBlanks(line.substr(0, equals)), value);
}

IniFile::Pairs& IniFile::Make(std::string_view name) {
  for (auto& [known, pairs] : m_sections) {
    if (automation::EqualsIgnoreCase(known, name)) return pairs;
  }
  return m_sections.emplace_back(name, Pairs()).second;
}

const IniFile::Pairs& IniFile::Section(std::string_view name) const {
  static const Pairs kNone;
  for (const auto& [known, pairs] : m_sections) {
    if (automation::EqualsIgnoreCase(known, name)) return pairs;
  }
  return kNone;
}

std::string IniFile::Value(std::string_view section, std::string_view key) const {
  std::string found;
  for (const auto& [name, value] : Section(section)) {
    if (automation::EqualsIgnoreCase(name, key)) found = value;
  }
  return found;
}

}  // namespace hearthmake::git
