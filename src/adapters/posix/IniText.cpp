#include "adapters/posix/IniText.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <iterator>
#include <optional>

#include "adapters/posix/TextEncoding.hpp"
#include "automation/Error.hpp"

namespace hearthmake::posix {

namespace {

constexpr std::string_view kBlanks = " \t";
constexpr std::string_view kEscaped = "escaped:\"";

bool IsControl(char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }

std::string_view Trim(std::string_view text) {
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::string Escape(std::string_view text) {
  const bool keepHigh = IsUtf8(text);
  std::string result(kEscaped);
  for (const char c : text) {
    constexpr std::string_view digits = "0123456789abcdef";
    const auto byte = static_cast<unsigned char>(c);
    if (c == '\n') {
      result += "\\n";
    } else if (c == '\r') {
      result += "\\r";
    } else if (c == '\t') {
      result += "\\t";
    } else if (c == '"' || c == '\\') {
      result += '\\';
      result += c;
    } else if (IsControl(c) || (byte >= 0x80 && !keepHigh)) {
      result += "\\x";
      result += digits[byte >> 4];
      result += digits[byte & 15];
    } else {
      result += c;
    }
  }
  return result + '"';
}

std::string Quote(std::string_view text) {
  std::string result = "\"";
  for (const char c : text) result += c == '"' ? "\"\"" : std::string(1, c);
  return result + '"';
}

// The text in a form that is read back as it is. Plain wherever the place allows that.
std::string Write(std::string_view text, std::string_view notAtStart, std::string_view notInside) {
  if (std::any_of(text.begin(), text.end(), IsControl) || !IsUtf8(text)) return Escape(text);
  const bool plain = Trim(text).size() == text.size() && !text.starts_with('"') &&
                     !text.starts_with(kEscaped) &&
                     (text.empty() || notAtStart.find(text.front()) == std::string_view::npos) &&
                     text.find_first_of(notInside) == std::string_view::npos;
  return plain ? std::string(text) : Quote(text);
}

std::string WriteValue(std::string_view value) { return Write(value, "", ""); }
std::string WriteKey(std::string_view key) { return key.empty() ? "\"\"" : Write(key, "[;#", "="); }
std::string WriteHeader(std::string_view application, std::string_view section) {
  const std::string first = application.empty() ? "\"\"" : Write(application, "", "\\");
  return "[" + first + "\\" + Write(section, "", "") + "]";
}

// Takes a text in quotes off the front; nothing (and nothing taken) when it is not well formed.
std::optional<std::string> TakeQuoted(std::string_view& text) {
  std::string result;
  for (std::size_t i = 1; i < text.size(); ++i) {
    if (text[i] == '"') {
      if (i + 1 == text.size() || text[i + 1] != '"') {
        text.remove_prefix(i + 1);
        return result;
      }
      ++i;
    }
    result += text[i];
  }
  return std::nullopt;
}

std::optional<char> Unescape(std::string_view text, std::size_t& at) {
  switch (text[at]) {
    case 'n': return '\n';
    case 'r': return '\r';
    case 't': return '\t';
    case '"':
    case '\\': return text[at];
    case 'x': {
      unsigned value = 0;
      if (text.size() - at < 3) return std::nullopt;
      const char* const end = text.data() + at + 3;
      if (std::from_chars(text.data() + at + 1, end, value, 16).ptr != end) return std::nullopt;
      at += 2;
      return static_cast<char>(value);
    }
    default: return std::nullopt;
  }
}

std::optional<std::string> TakeEscaped(std::string_view& text) {
  std::string result;
  for (std::size_t i = kEscaped.size(); i < text.size(); ++i) {
    if (text[i] == '"') {
      text.remove_prefix(i + 1);
      return result;
    }
    if (text[i] != '\\') {
      result += text[i];
      continue;
    }
    if (++i == text.size()) break;
    const std::optional<char> character = Unescape(text, i);
    if (!character) break;
    result += *character;
  }
  return std::nullopt;
}

std::optional<std::string> TakeWrapped(std::string_view& text) {
  if (text.starts_with('"')) return TakeQuoted(text);
  if (text.starts_with(kEscaped)) return TakeEscaped(text);
  return std::nullopt;
}

std::string ReadWhole(std::string_view text) {
  text = Trim(text);
  std::string_view rest = text;
  std::optional<std::string> wrapped = TakeWrapped(rest);
  return wrapped && rest.empty() ? std::move(*wrapped) : std::string(text);
}

// Two texts with a separator between them. The first may hold the separator when it is wrapped.
std::optional<std::pair<std::string, std::string>> ReadPair(std::string_view text, char separator) {
  std::string_view rest = text;
  std::optional<std::string> first = TakeWrapped(rest);
  rest = Trim(rest);
  if (first && rest.starts_with(separator)) return std::pair(std::move(*first), ReadWhole(rest.substr(1)));
  const std::size_t end = text.find(separator);
  if (end == std::string_view::npos) return std::nullopt;
  return std::pair(std::string(Trim(text.substr(0, end))), ReadWhole(text.substr(end + 1)));
}

std::string_view WithoutLineEnd(std::string_view line) {
  if (line.ends_with('\n')) line.remove_suffix(1);
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

// The last line of a file may lack its line end, or the second half of it.
void EndLine(std::string& line, const std::string& lineEnd) {
  if (line.empty() || line.ends_with('\n')) return;
  line += line.ends_with('\r') ? "\n" : lineEnd;
}

[[noreturn]] void RaiseJunk(const std::string& name, std::size_t line, std::string_view what) {
  automation::Raise(automation::kInvalidValue, "SettingsStore",
                    name + ", line " + std::to_string(line) + ": " + std::string(what));
}

}  // namespace

IniText::IniText(std::string bytes, const std::string& name) { Parse(DecodeText(std::move(bytes)), name); }

void IniText::Parse(std::string_view text, const std::string& name) {
  Section* section = nullptr;
  for (std::size_t number = 1; !text.empty(); ++number) {
    const std::size_t length = std::min(text.find('\n'), text.size() - 1) + 1;
    const Line line = m_lines.insert(m_lines.end(), std::string(text.substr(0, length)));
    text.remove_prefix(length);
    const std::string_view content = Trim(WithoutLineEnd(*line));
    if (number == 1 && line->ends_with("\r\n")) m_lineEnd = "\r\n";

    if (content.find('\0') != std::string_view::npos) RaiseJunk(name, number, "a zero byte is no text");
    if (content.empty() || content.starts_with(';') || content.starts_with('#')) continue;
    if (content.starts_with('[')) {
      if (!content.ends_with(']')) RaiseJunk(name, number, "the name of a section ends with ]");
      const std::string_view inside = content.substr(1, content.size() - 2);
      auto names = ReadPair(inside, '\\');
      if (!names) names.emplace(ReadWhole(inside), std::string());
      section = &m_sections[{FoldCase(names->first), FoldCase(names->second)}];
    } else {
      if (section == nullptr) RaiseJunk(name, number, "expected a section, [Application\\Section]");
      auto pair = ReadPair(content, '=');
      if (!pair) RaiseJunk(name, number, "expected Key=Value, a [section] or a ; comment");
      Put(*section, std::move(pair->first), std::move(pair->second), line);
    }
    section->last = line;
  }
}

platform::SettingPairs IniText::GetAll(std::string_view application, std::string_view section) const {
  platform::SettingPairs pairs;
  if (const Section* found = Find(application, section))
    for (const Setting& setting : found->settings) pairs.emplace_back(setting.key, setting.value);
  return pairs;
}

bool IniText::Set(std::string_view application, std::string_view section, std::string_view key,
                  std::string_view value) {
  Section& place = Make(application, section);
  const auto known = place.byKey.find(FoldCase(key));
  if (known != place.byKey.end()) {
    Setting& setting = place.settings[known->second];
    if (setting.value == value) return false;
    setting.value = value;
    *setting.lines.back() = WriteKey(setting.key) + "=" + WriteValue(value) + m_lineEnd;
    return true;
  }
  EndLine(*place.last, m_lineEnd);
  place.last = m_lines.insert(std::next(place.last), WriteKey(key) + "=" + WriteValue(value) + m_lineEnd);
  Put(place, std::string(key), std::string(value), place.last);
  return true;
}

bool IniText::Remove(std::string_view application, std::string_view section, std::string_view key) {
  const auto place = m_sections.find({FoldCase(application), FoldCase(section)});
  if (place == m_sections.end()) return false;
  Section& found = place->second;
  const auto known = found.byKey.find(FoldCase(key));
  if (known == found.byKey.end()) return false;
  const auto setting = found.settings.begin() + static_cast<std::ptrdiff_t>(known->second);
  for (const Line line : setting->lines) line->clear();  // an empty line without end prints as nothing
  found.settings.erase(setting);
  found.byKey.clear();
  for (std::size_t i = 0; i < found.settings.size(); ++i) found.byKey[FoldCase(found.settings[i].key)] = i;
  return true;
}

std::string IniText::Print() const {
  std::string text;
  for (const std::string& line : m_lines) text += line;
  return text;
}

const IniText::Section* IniText::Find(std::string_view application, std::string_view section) const {
  const auto found = m_sections.find({FoldCase(application), FoldCase(section)});
  return found == m_sections.end() ? nullptr : &found->second;
}

IniText::Section& IniText::Make(std::string_view application, std::string_view section) {
  const auto [place, isNew] = m_sections.try_emplace({FoldCase(application), FoldCase(section)});
  if (isNew) {
    if (!m_lines.empty()) EndLine(m_lines.back(), m_lineEnd);
    if (!m_lines.empty()) m_lines.push_back(m_lineEnd);
    place->second.last = m_lines.insert(m_lines.end(), WriteHeader(application, section) + m_lineEnd);
  }
  return place->second;
}

void IniText::Put(Section& section, std::string key, std::string value, Line line) {
  const auto [place, isNew] = section.byKey.try_emplace(FoldCase(key), section.settings.size());
  if (isNew) {
    section.settings.push_back({std::move(key), std::move(value), {line}});
    return;
  }
  Setting& setting = section.settings[place->second];
  setting.value = std::move(value);
  setting.lines.push_back(line);
}

}  // namespace hearthmake::posix
