#include "adapters/posix/RegText.hpp"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <optional>
#include <utility>

#include "adapters/posix/RegistryData.hpp"
#include "adapters/posix/TextEncoding.hpp"
#include "automation/Error.hpp"
#include "automation/Utf.hpp"

namespace hearthmake::posix {

using platform::RegistryRoot;
using platform::RegistryType;
using platform::RegistryValue;

namespace {

constexpr std::string_view kHeader = "Windows Registry Editor Version 5.00";
constexpr std::string_view kOldHeader = "REGEDIT4";
constexpr std::string_view kBlanks = " \t\r";

struct RootNames {
  RegistryRoot root;
  std::string_view name;
  std::string_view shortName;
};
constexpr std::array<RootNames, 4> kRoots = {{
    {RegistryRoot::ClassesRoot, "HKEY_CLASSES_ROOT", "HKCR"},
    {RegistryRoot::CurrentUser, "HKEY_CURRENT_USER", "HKCU"},
    {RegistryRoot::LocalMachine, "HKEY_LOCAL_MACHINE", "HKLM"},
    {RegistryRoot::Users, "HKEY_USERS", "HKU"},
}};

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r'; }

// Whether there are neither control characters nor any beyond ASCII; eight at a time, as nearly all names
// are so and every one of a file is asked about.
bool IsPrintableAscii(std::string_view text) {
  constexpr std::uint64_t kOnes = 0x0101010101010101;
  std::uint64_t word = 0;
  for (; text.size() >= sizeof word; text.remove_prefix(sizeof word)) {
    std::memcpy(&word, text.data(), sizeof word);
    // Taking the first printable one from each sets the high bit of those below it.
    if (((word | (word - kOnes * ' ')) & kOnes << 7) != 0) return false;
  }
  return std::all_of(text.begin(), text.end(),
                     [](char c) { return c >= ' ' && static_cast<unsigned char>(c) < 0x80; });
}

bool IsControl(char c) { return static_cast<unsigned char>(c) < 0x20; }

std::string_view WithoutFinalBlanks(std::string_view text) {
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

void AppendQuoted(std::string& text, std::string_view content) {
  text += '"';
  for (const char c : content) {
    if (c == '"' || c == '\\') text += '\\';
    text += c;
  }
  text += '"';
}

class Parser {
 public:
  Parser(std::string_view text, const std::string& name,
         const std::function<void(const RegistryChange&)>& report)
      : m_start(text.data()), m_text(text), m_name(name), m_report(report) {}

  void Run() {
    ReadHeader();
    while (SkipToContent()) {
      if (m_text.front() == '[') {
        ReadKey();
      } else if (m_text.front() == '"' || m_text.front() == '@') {
        ReadValue();
      } else {
        Fail("expected a [key], a \"name\"=value, @=value or a ; comment");
      }
    }
  }

 private:
  [[noreturn]] void Fail(std::string_view what) const {
    // Counted only now: nearly no file has an error in it.
    const auto line = 1 + std::count(m_start, m_text.data(), '\n');
    automation::Raise(automation::kInvalidValue, "Registry",
                      m_name + ", line " + std::to_string(line) + ": " + std::string(what));
  }

  // Everything up to the line's end, and that too.
  void SkipLine() {
    const std::size_t end = std::min(m_text.find('\n'), m_text.size());
    Skip(std::min(end + 1, m_text.size()));
  }

  void Skip(std::size_t count) { m_text.remove_prefix(count); }

  void SkipBlanks() {
    while (!m_text.empty() && IsBlank(m_text.front())) Skip(1);
  }

  bool SkipToContent() {
    while (true) {
      while (!m_text.empty() && (IsBlank(m_text.front()) || m_text.front() == '\n')) Skip(1);
      if (m_text.empty()) return false;
      if (m_text.front() != ';') return true;
      SkipLine();
    }
  }

  // A final comment is all that may follow on a line.
  void EndLine() {
    SkipBlanks();
    if (!m_text.empty() && m_text.front() != ';' && m_text.front() != '\n')
      Fail("there is something behind the value");
    SkipLine();
  }

  void ReadHeader() {
    if (!SkipToContent()) return;  // an empty text changes nothing
    const std::string_view header = m_text.substr(0, m_text.find_first_of("\r\n"));
    m_oldFormat = header.starts_with(kOldHeader);
    if (!m_oldFormat && !header.starts_with(kHeader))
      Fail("a registry file begins with \"" + std::string(kHeader) + "\"");
    SkipLine();
  }

  void ReadKey() {
    const std::size_t end = std::min(m_text.find('\n'), m_text.size());
    std::string_view path = WithoutFinalBlanks(m_text.substr(0, end));
    if (!path.ends_with(']')) Fail("a key ends with ]");
    path = path.substr(1, path.size() - 2);
    ClearValue();
    m_change.kind = RegistryChange::Kind::MakeKey;
    if (path.starts_with('-')) {
      path.remove_prefix(1);
      m_change.kind = RegistryChange::Kind::RemoveKey;
    }
    const std::string_view rootName = path.substr(0, path.find('\\'));
    m_change.root = ReadRoot(rootName);
    path.remove_prefix(std::min(rootName.size() + 1, path.size()));
    if (!RegText::IsName(path)) Fail("the name of a key has no control characters");
    m_change.key = path;
    m_hasKey = m_change.kind == RegistryChange::Kind::MakeKey;
    m_report(m_change);
    Skip(end);
  }

  RegistryRoot ReadRoot(std::string_view name) const {
    for (const RootNames& root : kRoots)
      if (name == root.name) return root.root;
    const std::string folded = FoldCase(name);
    for (const RootNames& root : kRoots)
      if (folded == root.name || folded == root.shortName) return root.root;
    Fail("a key begins with HKEY_CLASSES_ROOT, HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE or HKEY_USERS");
  }

  // The texts keep their memory from one change to the next.
  void ClearValue() {
    m_change.name.clear();
    m_change.value.type = RegistryType::None;
    m_change.value.data.clear();
  }

  void ReadValue() {
    if (!m_hasKey) Fail("a value stands below the [key] that it belongs to");
    ClearValue();
    if (m_text.front() == '@') {
      Skip(1);
    } else {
      TakeString(m_change.name);
    }
    if (!RegText::IsName(m_change.name)) Fail("the name of a value has no control characters");
    SkipBlanks();
    if (!m_text.starts_with('=')) Fail("expected = behind the name of a value");
    Skip(1);
    SkipBlanks();
    m_change.kind = RegistryChange::Kind::SetValue;
    if (m_text.starts_with('-')) {
      Skip(1);
      m_change.kind = RegistryChange::Kind::RemoveValue;
    } else if (m_text.starts_with('"')) {
      m_change.value.type = RegistryType::String;
      TakeString(m_change.value.data);
    } else if (m_text.starts_with("dword:")) {
      Skip(6);
      m_change.value = TakeDWord();
    } else {
      m_change.value = TakeHex();
    }
    EndLine();
    m_report(m_change);
  }

  // Of backslashes only those before a backslash or a quote are escapes: a path with single ones, which
  // people write by mistake, means what it says. A text may go on over line ends. Appends to the content.
  void TakeString(std::string& content) {
    std::size_t start = 1;  // of what is not in the content yet
    std::size_t next = start;
    std::size_t quote = m_text.find('"', next);
    while (quote != std::string_view::npos) {
      const std::size_t backslash = m_text.substr(0, quote).find('\\', next);
      if (backslash == std::string_view::npos) {
        content.append(m_text, start, quote - start);
        Skip(quote + 1);
        return;
      }
      next = backslash + 1;
      if (m_text[next] != '\\' && m_text[next] != '"') continue;
      content.append(m_text, start, backslash - start);
      start = next++;
      if (start == quote) quote = m_text.find('"', next);
    }
    Fail("the closing quote is missing");
  }

  RegistryValue TakeDWord() {
    const std::string_view digits = m_text.substr(0, m_text.find_first_of(" \t\r\n;"));
    const auto number = ParseHexNumber(digits);
    if (!number) Fail("dword: takes one to eight hexadecimal digits");
    Skip(digits.size());
    return DWordValue(*number);
  }

  RegistryValue TakeHex() {
    std::string_view data = m_text;
    const auto type = TakeHexType(data);
    if (!type) Fail("a value is \"text\", dword:…, hex:…, hex(n):… or -");
    Skip(m_text.size() - data.size());
    const std::size_t length = ContinuedLength(m_text);
    const auto bytes = ParseHexBytes(m_text.substr(0, length));
    if (!bytes) Fail("hexadecimal bytes are two digits each, with commas between them");
    Skip(length);
    // The old format has these texts in the code page.
    const bool codePage = m_oldFormat && IsTextType(static_cast<RegistryType>(*type));
    return DecodeRegistryValue(*type,
                               codePage ? Utf16FromUtf8(automation::Windows1252ToUtf8(*bytes)) : *bytes);
  }

  // Up to the end of the line or a comment; a line that ends with a backslash goes on with the next.
  static std::size_t ContinuedLength(std::string_view text) {
    std::size_t at = 0;
    while (true) {
      at = text.find_first_of("\n;", at);
      if (at == std::string_view::npos) return text.size();
      if (text[at] == ';') return at;
      const std::size_t last = at == 0 ? std::string_view::npos : text.find_last_not_of(kBlanks, at - 1);
      if (last == std::string_view::npos || text[last] != '\\') return at;
      ++at;
    }
  }

  const char* m_start;
  std::string_view m_text;  // what is still to be read
  const std::string& m_name;
  const std::function<void(const RegistryChange&)>& m_report;
  bool m_oldFormat = false;
  bool m_hasKey = false;
  RegistryChange m_change;
};

}  // namespace

void RegText::Parse(std::string bytes, const std::string& name,
                    const std::function<void(const RegistryChange&)>& report) {
  const std::string text = DecodeText(std::move(bytes));
  Parser(text, name, report).Run();
}

std::string RegText::Header() { return std::string(kHeader) + "\n\n"; }

void RegText::AppendKey(std::string& text, std::string_view fullKey) { ((text += '[') += fullKey) += "]\n"; }

void RegText::AppendKeyRemoval(std::string& text, std::string_view fullKey) {
  ((text += "[-") += fullKey) += "]\n";
}

void RegText::AppendValue(std::string& text, std::string_view name, const RegistryValue& value) {
  if (name.empty()) {
    text += '@';
  } else {
    AppendQuoted(text, name);
  }
  text += '=';
  if (value.type == RegistryType::String && IsName(value.data)) {
    AppendQuoted(text, value.data);
  } else if (value.type == RegistryType::DWord && value.data.size() == 4) {
    std::string digits;
    AppendHexBytes(digits, std::string(value.data.rbegin(), value.data.rend()));
    std::erase(digits, ',');
    (text += "dword:") += digits;
  } else {
    text += HexTypePrefix(value.type);
    AppendHexBytes(text, EncodeRegistryValue(value));
  }
  text += '\n';
}

void RegText::AppendValueRemoval(std::string& text, std::string_view name) {
  if (name.empty()) {
    text += '@';
  } else {
    AppendQuoted(text, name);
  }
  text += "=-\n";
}

bool RegText::IsName(std::string_view name) {
  return IsPrintableAscii(name) || (std::none_of(name.begin(), name.end(), IsControl) && IsUtf8(name));
}

std::string_view RegText::RootName(RegistryRoot root) {
  for (const RootNames& names : kRoots)
    if (names.root == root) return names.name;
  return {};
}

}  // namespace hearthmake::posix
