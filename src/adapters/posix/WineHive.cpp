#include "adapters/posix/WineHive.hpp"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <set>
#include <utility>

#include "adapters/posix/RegistryData.hpp"
#include "adapters/posix/TextEncoding.hpp"
#include "automation/Error.hpp"

namespace hearthmake::posix {

using platform::RegistryType;
using platform::RegistryValue;

namespace {

constexpr std::string_view kHeader = "WINE REGISTRY Version 2";
constexpr int kMostLinks = 16;

bool IsOctal(char c) { return c >= '0' && c <= '7'; }
bool IsHex(char c) { return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'); }

[[noreturn]] void RaiseJunk(const std::string& name, std::size_t line, std::string_view what) {
  automation::Raise(automation::kInvalidValue, "Registry",
                    name + ", line " + std::to_string(line) + ": " + std::string(what));
}

void AppendUnit(std::string& units, std::uint32_t unit) {
  units += static_cast<char>(unit & 0xFF);
  units += static_cast<char>(unit >> 8 & 0xFF);
}

// A number of up to `most` digits.
template <class IsDigit>
std::uint32_t TakeNumber(std::string_view text, std::size_t& at, std::size_t most, int base,
                         IsDigit isDigit) {
  std::size_t count = 0;
  while (count < most && at + count < text.size() && isDigit(text[at + count])) ++count;
  const std::uint32_t number =
      static_cast<std::uint32_t>(std::stoul(std::string(text.substr(at, count)), nullptr, base));
  at += count;
  return number;
}

// The text between two delimiters, with the escapes \a \b \e \f \n \r \t \v, \x and one to four
// hexadecimal digits (a UTF-16 unit), one to three octal digits; another escaped character is itself.
// Starts behind the opening delimiter; `length` becomes what was read, the closing one included.
// Nothing when that is missing.
std::optional<std::string> Unescape(std::string_view text, char close, std::size_t* length) {
  static constexpr std::string_view letters = "abefnrtv";
  static constexpr std::string_view controls = "\a\b\033\f\n\r\t\v";
  std::string units;
  for (std::size_t at = 0; at < text.size();) {
    const char c = text[at++];
    if (c == close) {
      *length = at;
      return Utf8FromUtf16(units);
    }
    if (c != '\\') {
      // What is not ASCII was written by hand; take the whole character.
      const std::size_t start = at - 1;
      while ((c & 0x80) != 0 && at < text.size() && (text[at] & 0xC0) == 0x80) ++at;
      units += Utf16FromUtf8(text.substr(start, at - start));
      continue;
    }
    if (at == text.size()) break;
    if (text[at] == 'x' && at + 1 < text.size() && IsHex(text[at + 1])) {
      AppendUnit(units, TakeNumber(text, ++at, 4, 16, IsHex));
    } else if (IsOctal(text[at])) {
      AppendUnit(units, TakeNumber(text, at, 3, 8, IsOctal));
    } else if (const std::size_t control = letters.find(text[at]); control != std::string_view::npos) {
      AppendUnit(units, static_cast<unsigned char>(controls[control]));
      ++at;
    } else {
      units += Utf16FromUtf8(text.substr(at++, 1));
    }
  }
  return std::nullopt;
}

// The reverse; everything but printable ASCII is escaped.
std::string Escape(std::string_view utf8, std::string_view delimiters) {
  const std::string units = Utf16FromUtf8(utf8);
  std::string text;
  char buffer[8];
  for (std::size_t i = 0; i + 1 < units.size(); i += 2) {
    const unsigned unit = static_cast<unsigned char>(units[i]) |
                          static_cast<unsigned>(static_cast<unsigned char>(units[i + 1])) << 8;
    const char c = static_cast<char>(unit);
    if (unit == '\n') {
      text += "\\n";
    } else if (unit == '\r') {
      text += "\\r";
    } else if (unit == '\t') {
      text += "\\t";
    } else if (unit < 0x20) {
      std::snprintf(buffer, sizeof buffer, "\\%03o", unit);
      text += buffer;
    } else if (unit > 0x7E) {
      std::snprintf(buffer, sizeof buffer, "\\x%04x", unit);
      text += buffer;
    } else {
      if (c == '\\' || delimiters.find(c) != std::string_view::npos) text += '\\';
      text += c;
    }
  }
  return text;
}

std::string_view WithoutLineEnd(std::string_view line) {
  while (line.ends_with('\n') || line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

std::string_view TakeLine(std::string_view& text) {
  if (text.empty()) return {};
  const std::size_t end = std::min(text.find('\n'), text.size() - 1) + 1;
  const std::string_view line = text.substr(0, end);
  text.remove_prefix(end);
  return line;
}

}  // namespace

// Walks over the lines of a section behind its `[name]`.
class WineHive::EntryReader {
 public:
  explicit EntryReader(Section section) : m_rest(section) { TakeLine(m_rest); }

  std::optional<Entry> Next() {
    if (m_rest.empty()) return std::nullopt;
    const std::string_view before = m_rest;
    std::string_view line = TakeLine(m_rest);
    Entry entry;
    if (line.starts_with('"') || line.starts_with('@')) {
      for (std::string_view last = line; WithoutLineEnd(last).ends_with('\\') && !m_rest.empty();)
        last = TakeLine(m_rest);
      line = before.substr(0, before.size() - m_rest.size());
      ReadName(entry, WithoutLineEnd(line));
    }
    entry.text = before.substr(0, before.size() - m_rest.size());
    return entry;
  }

 private:
  static void ReadName(Entry& entry, std::string_view line) {
    std::size_t length = 0;
    std::optional<std::string> name = std::string();
    if (line.front() == '"') name = Unescape(line.substr(1), '"', &length);
    if (!name || line.substr(1 + length, 1) != "=") return;
    entry.name = std::move(name);
    entry.data = line.substr(length + 2);
  }

  std::string_view m_rest;
};

WineHive::WineHive(std::string text, const std::string& name) : m_text(std::move(text)) { Load(name); }

void WineHive::Load(const std::string& name) {
  if (!m_text.starts_with(kHeader))
    RaiseJunk(name, 1, "a Wine registry begins with \"" + std::string(kHeader) + "\"");
  std::string_view rest = m_text;
  std::optional<std::size_t> start;
  bool isLink = false;
  std::size_t startLine = 0;
  m_startLength = m_text.size();
  for (std::size_t number = 1; !rest.empty(); ++number) {
    const std::size_t offset = m_text.size() - rest.size();
    const std::string_view line = TakeLine(rest);
    if (line.front() == '[') {
      if (start) {
        AddSection(*start, offset, isLink, startLine, name);
      } else {
        m_startLength = offset;
      }
      start = offset;
      startLine = number;
      isLink = false;
    } else if (!start) {
      LoadStart(WithoutLineEnd(line));
    } else if (line.front() == '#' && WithoutLineEnd(line) == "#link") {
      isLink = true;
    }
  }
  if (start) AddSection(*start, m_text.size(), isLink, startLine, name);
}

void WineHive::LoadStart(std::string_view line) {
  if (line == "#arch=win64") m_is64Bit = true;
  constexpr std::string_view relative = ";; All keys relative to ";
  if (!line.starts_with(relative)) return;
  // `\\Machine` or `REGISTRY\\Machine`, by the age of Wine.
  std::size_t length = 0;
  std::string base = Unescape(std::string(line.substr(relative.size())) + ']', ']', &length).value_or("");
  while (base.starts_with('\\')) base.erase(0, 1);
  if (FoldCase(base).starts_with("REGISTRY\\")) base.erase(0, 9);
  m_base = std::move(base);
}

void WineHive::AddSection(std::size_t start, std::size_t end, bool isLink, std::size_t line,
                          const std::string& name) {
  const std::string_view section = std::string_view(m_text).substr(start, end - start);
  std::size_t length = 0;
  const std::string_view firstLine = WithoutLineEnd(section.substr(0, section.find('\n')));
  const auto path = Unescape(firstLine.substr(1), ']', &length);
  if (!path) RaiseJunk(name, line, "the name of a key ends with ]");
  try {
    Content& content = m_tree.Make(*path).content;
    content.sections.push_back(m_sections.size());
    content.isLink = content.isLink || isLink;
  } catch (const automation::Error& error) {
    RaiseJunk(name, line, error.Description());
  }
  m_sections.push_back(section);
}

std::optional<RegistryValue> WineHive::Query(std::string_view key, std::string_view name) {
  const Tree::Key* place = Find(key);
  if (place == nullptr) return std::nullopt;
  const auto entry = FindEntry(place->content, name, nullptr);
  return entry ? ReadData(entry->data) : std::nullopt;
}

std::vector<std::string> WineHive::SubKeys(std::string_view key) {
  std::vector<std::string> names;
  if (const Tree::Key* place = Find(key))
    for (const Tree::Key* child : Tree::Children(*place)) names.emplace_back(child->name);
  return names;
}

std::vector<std::string> WineHive::ValueNames(std::string_view key) {
  std::vector<std::string> names;
  const Tree::Key* place = Find(key);
  if (place == nullptr) return names;
  std::set<std::string> seen;
  for (const std::size_t section : place->content.sections) {
    EntryReader reader(m_sections[section]);
    while (const auto entry = reader.Next())
      if (entry->name && seen.insert(FoldCase(*entry->name)).second) names.push_back(*entry->name);
  }
  return names;
}

bool WineHive::Set(std::string_view key, std::string_view name, const RegistryValue& value) {
  const std::optional<std::string> path = Resolve(key);
  if (!path)
    automation::Raise(automation::RuntimeError::InvalidProcedureCall, "Registry",
                      "the link " + std::string(key) + " leads nowhere");
  Content& content = m_tree.Make(*path).content;
  std::size_t section = 0;
  if (const auto old = FindEntry(content, name, &section)) {
    const std::string line = PrintValue(*old->name, value);
    if (old->text == line) return false;
    std::string text(m_sections[section]);
    text.replace(static_cast<std::size_t>(old->text.data() - m_sections[section].data()), old->text.size(),
                 line);
    ReplaceText(section, std::move(text));
    return true;
  }
  if (content.sections.empty()) {
    content.sections.push_back(m_sections.size());
    m_sections.emplace_back();
    ReplaceText(content.sections.back(), PrintKey(*path) + PrintValue(name, value) + "\n");
    return true;
  }
  // Behind the last line that is not blank.
  section = content.sections.back();
  std::string text(m_sections[section]);
  if (!text.ends_with('\n')) text += '\n';
  const std::size_t contentEnd = text.find('\n', text.find_last_not_of("\r\n")) + 1;
  std::string line = PrintValue(name, value);
  // A damaged last line that says it goes on would swallow the new one.
  if (text[contentEnd - 2] == '\\' || text.compare(contentEnd - 3, 2, "\\\r") == 0) line.insert(0, 1, '\n');
  text.insert(contentEnd, line);
  ReplaceText(section, std::move(text));
  return true;
}

bool WineHive::RemoveValue(std::string_view key, std::string_view name) {
  const Tree::Key* place = Find(key);
  if (place == nullptr) return false;
  const std::string folded = FoldCase(name);
  bool removed = false;
  for (const std::size_t section : place->content.sections) {
    std::string_view rest = m_sections[section];
    std::string kept(TakeLine(rest));
    EntryReader reader(m_sections[section]);
    while (const auto entry = reader.Next())
      if (!entry->name || FoldCase(*entry->name) != folded) kept += entry->text;
    if (kept.size() == m_sections[section].size()) continue;
    ReplaceText(section, std::move(kept));
    removed = true;
  }
  return removed;
}

bool WineHive::RemoveKey(std::string_view key) {
  const std::optional<std::string> path = Resolve(key);
  const Tree::Key* place = path ? m_tree.Find(*path) : nullptr;
  if (place == nullptr || place == &m_tree.Root()) return false;
  std::vector<const Tree::Key*> pending = {place};
  while (!pending.empty()) {
    const Tree::Key* next = pending.back();
    pending.pop_back();
    for (const std::size_t section : next->content.sections) m_sections[section] = {};
    for (const Tree::Key* child = next->children.first; child != nullptr; child = child->next)
      pending.push_back(child);
  }
  return m_tree.Remove(*path);
}

std::string WineHive::Print() const {
  std::string text = m_text.substr(0, m_startLength);
  for (const Section& section : m_sections) {
    if (!section.empty() && !text.ends_with('\n')) text += '\n';
    text += section;
  }
  return text;
}

std::optional<std::string> WineHive::Resolve(std::string_view key) {
  std::string path(key);
  for (int links = 0; links <= kMostLinks; ++links) {
    std::string_view rest = path;
    const Tree::Key* place = &m_tree.Root();
    while (place != nullptr && !place->content.isLink) {
      const std::string_view name = Tree::TakeName(rest);
      if (name.empty()) return path;
      place = m_tree.Child(*place, name);
    }
    if (place == nullptr) return path;
    const auto target = LinkTarget(*place);
    if (!target) return std::nullopt;
    path = *target + std::string(rest);
  }
  return std::nullopt;
}

WineHive::Tree::Key* WineHive::Find(std::string_view key) {
  const std::optional<std::string> path = Resolve(key);
  return path ? m_tree.Find(*path) : nullptr;
}

std::optional<std::string> WineHive::LinkTarget(const Tree::Key& link) const {
  const auto entry = FindEntry(link.content, "SymbolicLinkValue", nullptr);
  const auto value = entry ? ReadData(entry->data) : std::nullopt;
  if (!value) return std::nullopt;
  std::string target = Utf8FromUtf16(value->data);
  const std::string base = "\\REGISTRY\\" + FoldCase(m_base);
  const std::string folded = FoldCase(target);
  if (m_base.empty() || !folded.starts_with(base)) return std::nullopt;
  // Upper case has the length of the name here: what comes before the keys is ASCII.
  target.erase(0, base.size());
  if (!target.empty() && !target.starts_with('\\')) return std::nullopt;
  return target;
}

std::optional<WineHive::Entry> WineHive::FindEntry(const Content& content, std::string_view name,
                                                   std::size_t* section) const {
  const std::string folded = FoldCase(name);
  for (auto index = content.sections.rbegin(); index != content.sections.rend(); ++index) {
    std::optional<Entry> found;
    EntryReader reader(m_sections[*index]);
    while (auto entry = reader.Next())
      if (entry->name && FoldCase(*entry->name) == folded) found = std::move(entry);
    if (!found) continue;
    if (section != nullptr) *section = *index;
    return found;
  }
  return std::nullopt;
}

std::optional<RegistryValue> WineHive::ReadData(std::string_view data) {
  std::uint32_t type = static_cast<std::uint32_t>(RegistryType::String);
  if (data.starts_with("dword:")) {
    const auto number = ParseHexNumber(data.substr(6));
    return number ? std::optional(DWordValue(*number)) : std::nullopt;
  }
  if (data.starts_with("str")) {
    const std::size_t quote = data.find('"');
    if (quote == std::string_view::npos) return std::nullopt;
    if (data.substr(0, quote) != "str:") {
      const std::string_view number = data.substr(0, quote);
      if (!number.starts_with("str(") || !number.ends_with("):")) return std::nullopt;
      const auto given = ParseHexNumber(number.substr(4, number.size() - 6));
      if (!given) return std::nullopt;
      type = *given;
    }
    data.remove_prefix(quote);
  }
  if (data.starts_with('"')) {
    std::size_t length = 0;
    const auto text = Unescape(data.substr(1), '"', &length);
    if (!text) return std::nullopt;
    return DecodeRegistryValue(type, Utf16FromUtf8(*text + '\0'));
  }
  const auto hexType = TakeHexType(data);
  const auto bytes = hexType ? ParseHexBytes(data) : std::nullopt;
  return bytes ? std::optional(DecodeRegistryValue(*hexType, *bytes)) : std::nullopt;
}

std::string WineHive::PrintValue(std::string_view name, const RegistryValue& value) {
  std::string text = name.empty() ? "@" : '"' + Escape(name, "\"") + '"';
  text += '=';
  if (IsTextType(value.type)) {
    if (value.type != RegistryType::String)
      text += "str(" + std::to_string(static_cast<std::uint32_t>(value.type)) + "):";
    const bool isList = value.type == RegistryType::MultiString;
    text += '"' + Escape(isList ? NormalizeMultiString(value.data) : value.data, "\"") + '"';
  } else if (value.type == RegistryType::DWord && value.data.size() == 4) {
    std::string digits;
    AppendHexBytes(digits, std::string(value.data.rbegin(), value.data.rend()));
    std::erase(digits, ',');
    text += "dword:" + digits;
  } else {
    text += HexTypePrefix(value.type);
    AppendHexBytes(text, value.data);
  }
  return text + '\n';
}

// With the time of the change, in seconds since 1970 and in units of 100 ns since 1601.
std::string WineHive::PrintKey(std::string_view path) {
  using namespace std::chrono;
  constexpr std::int64_t kUnixEpoch = 116'444'736'000'000'000;
  const auto now = system_clock::now().time_since_epoch();
  const std::int64_t ticks = duration_cast<nanoseconds>(now).count() / 100 + kUnixEpoch;
  char time[32];
  std::snprintf(time, sizeof time, "#time=%llx\n", static_cast<unsigned long long>(ticks));
  std::string names;
  for (std::string_view name = Tree::TakeName(path); !name.empty(); name = Tree::TakeName(path)) {
    if (!names.empty()) names += '\\';
    names += name;
  }
  return "[" + Escape(names, "[]") + "] " + std::to_string(duration_cast<seconds>(now).count()) + "\n" + time;
}

void WineHive::ReplaceText(std::size_t section, std::string text) {
  std::string& place = m_newTexts[section];
  place = std::move(text);
  m_sections[section] = place;
}

}  // namespace hearthmake::posix
