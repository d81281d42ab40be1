#include "vb6/SourceFile.hpp"

#include <utility>
#include <vector>

#include "automation/Utf.hpp"
#include "vb6/CompileError.hpp"
#include "vb6/Declarations.hpp"
#include "vb6/Statements.hpp"
#include "vb6/Text.hpp"

namespace hearthmake::vb6 {
namespace {

// The description in front of the Basic text: VERSION, Object rows, Begin … End.
class Header {
 public:
  Header(std::string_view text, ComponentKind kind) : m_rest(text) {
    if (kind == ComponentKind::Module) return;
    CheckVersion(kind);
    SkipDescription();
  }

  std::string_view Rest() const { return m_rest; }
  unsigned NextLine() const { return m_line; }

 private:
  std::string_view PeekLine() const {
    std::string_view line = m_rest.substr(0, m_rest.find('\n'));
    if (line.ends_with('\r')) line.remove_suffix(1);
    return Trim(line);
  }
  void SkipLine() {
    const std::size_t end = m_rest.find('\n');
    m_rest.remove_prefix(end == std::string_view::npos ? m_rest.size() : end + 1);
    ++m_line;
  }

  void CheckVersion(ComponentKind kind) {
    const std::string_view line = PeekLine();
    if (kind == ComponentKind::Class) {
      if (!EqualNoCase(line, "VERSION 1.0 CLASS")) {
        throw CompileError(1, "Expected: VERSION 1.0 CLASS");
      }
    } else if (!StartsWithNoCase(line, "VERSION ") || line.find('.') == std::string_view::npos) {
      throw CompileError(1, "Expected: VERSION 5.00");
    }
    SkipLine();
  }

  void SkipDescription() {
    std::vector<unsigned> open;  // the lines of the Begins that wait for their End
    bool any = false;
    while (!m_rest.empty()) {
      const std::string_view line = PeekLine();
      if (IsBegin(line)) {
        open.push_back(m_line);
        any = true;
      } else if (EqualNoCase(line, "End") || EqualNoCase(line, "EndProperty")) {
        if (open.empty()) throw CompileError(m_line, "End without Begin");
        open.pop_back();
      } else if (open.empty() && !line.empty() && !StartsWithNoCase(line, "Object")) {
        break;
      }
      SkipLine();
    }
    if (!open.empty()) throw CompileError(open.back(), "Begin without End");
    if (!any) throw CompileError(m_line, "Expected: Begin");
  }

  static bool IsBegin(std::string_view line) {
    const std::string_view word = line.substr(0, line.find(' '));
    return EqualNoCase(word, "Begin") || EqualNoCase(word, "BeginProperty");
  }

  std::string_view m_rest;
  unsigned m_line = 1;
};

// Name and value of an Attribute statement: "VB_Name" or "Amount.VB_UserMemId".
struct AttributeStatement {
  std::string_view name;
  std::string_view value;
};

std::optional<AttributeStatement> AsAttribute(std::string_view statement) {
  constexpr std::string_view kWord = "Attribute ";
  const std::size_t equals = statement.find('=');
  if (!StartsWithNoCase(statement, kWord) || equals == std::string_view::npos) return std::nullopt;
  return AttributeStatement{Trim(statement.substr(kWord.size(), equals - kWord.size())),
                            Trim(statement.substr(equals + 1))};
}

// Sees that procedures begin and end. Branches of conditional compilation are alternatives: each starts
// from what was open at the #If.
class ProcedureBalance {
 public:
  void Add(const Statement& statement) {
    if (statement.text[0] == '#') return AddDirective(statement.text);
    if (const auto closed = ClosedProcedure(statement.text)) return Close(*closed, statement.line);
    const auto opened = OpenedProcedure(statement.text);
    if (!opened) return;
    if (m_open) ThrowMissingEnd(statement.line);
    m_open = opened;
  }

  void Finish(unsigned lastLine) const {
    if (m_open) ThrowMissingEnd(lastLine);
  }

  bool InProcedure() const { return m_open.has_value(); }

 private:
  void AddDirective(std::string_view text) {
    if (StartsWithNoCase(text, "#If")) {
      m_branches.push_back(m_open);
    } else if (StartsWithNoCase(text, "#Else") && !m_branches.empty()) {
      m_open = m_branches.back();
    } else if (StartsWithNoCase(text, "#End") && !m_branches.empty()) {
      m_branches.pop_back();
    }
  }

  void Close(ProcedureKind kind, unsigned line) {
    if (m_open && *m_open != kind) ThrowMissingEnd(line);
    if (!m_open) {
      const std::string word(ProcedureWord(kind));
      throw CompileError(line, "End " + word + " without " + word);
    }
    m_open.reset();
  }

  [[noreturn]] void ThrowMissingEnd(unsigned line) const {
    throw CompileError(line, "Expected End " + std::string(ProcedureWord(*m_open)));
  }

  std::optional<ProcedureKind> m_open;
  std::vector<std::optional<ProcedureKind>> m_branches;
};

// Gathers what the statements say, one after the other.
class SourceReader {
 public:
  explicit SourceReader(ComponentKind kind) : m_kind(kind) {}

  void Add(const Statement& statement) {
    m_lastLine = statement.line;
    if (const auto attribute = AsAttribute(statement.text)) return AddAttribute(*attribute, statement.line);
    const bool outside = !m_balance.InProcedure();
    m_balance.Add(statement);
    if (outside) AddMembers(statement.text);
  }

  SourceFacts Finish(std::string_view expectedName) {
    m_balance.Finish(m_lastLine);
    if (m_facts.name.empty() && m_kind != ComponentKind::Module) {
      throw CompileError(m_lastLine, "Expected: Attribute VB_Name");
    }
    if (!m_facts.name.empty() && !expectedName.empty() && !EqualNoCase(m_facts.name, expectedName)) {
      throw CompileError(m_nameLine, "Name conflict: the file holds '" + m_facts.name +
                                         "', the project names it '" + std::string(expectedName) + "'");
    }
    const bool exportable = m_kind == ComponentKind::Class || m_kind == ComponentKind::UserControl;
    if (exportable && m_exposed) {
      m_class.name = m_facts.name;
      m_class.control = m_kind == ComponentKind::UserControl;
      m_facts.exported = std::move(m_class);
    }
    return std::move(m_facts);
  }

 private:
  void AddAttribute(const AttributeStatement& attribute, unsigned line) {
    if (const std::size_t dot = attribute.name.find('.'); dot != std::string_view::npos) {
      AddMemberAttribute(attribute.name.substr(0, dot), attribute.name.substr(dot + 1), attribute.value);
    } else if (EqualNoCase(attribute.name, "VB_Name")) {
      m_facts.name = Unquote(attribute.value);
      m_nameLine = line;
    } else if (EqualNoCase(attribute.name, "VB_Exposed")) {
      m_exposed = EqualNoCase(attribute.value, "True");
    } else if (EqualNoCase(attribute.name, "VB_Creatable")) {
      m_class.creatable = EqualNoCase(attribute.value, "True");
    }
  }

  void AddMemberAttribute(std::string_view name, std::string_view attribute, std::string_view value) {
    for (auto* members : {&m_class.members, &m_class.events}) {
      for (Member& member : *members) {
        if (EqualNoCase(member.name, name)) SetMemberAttribute(member, attribute, value);
      }
    }
  }

  static void SetMemberAttribute(Member& member, std::string_view attribute, std::string_view value) {
    constexpr unsigned kHidden = 0x40;
    if (EqualNoCase(attribute, "VB_Description")) {
      member.help = Unquote(value);
    } else if (EqualNoCase(attribute, "VB_UserMemId")) {
      const bool negative = value.starts_with('-');
      const auto number = ParseNumber(negative ? value.substr(1) : value);
      if (number && *number <= 0x7FFFFFFF) {
        const auto id = static_cast<std::int32_t>(*number);
        member.dispatchId = negative ? -id : id;
      }
    } else if (EqualNoCase(attribute, "VB_MemberFlags")) {
      member.hidden = (ParseNumber(Unquote(value), 16).value_or(0) & kHidden) != 0;
    }
  }

  void AddMembers(std::string_view statement) {
    for (Member& member : PublicMembers(statement)) {
      // The halves of a property share one number, whichever of them carries the attribute.
      auto& members = member.kind == MemberKind::Event ? m_class.events : m_class.members;
      for (const Member& other : members) {
        if (EqualNoCase(other.name, member.name)) member.dispatchId = other.dispatchId;
      }
      members.push_back(std::move(member));
    }
  }

  ComponentKind m_kind;
  ProcedureBalance m_balance;
  SourceFacts m_facts;
  PublicClass m_class;
  bool m_exposed = false;
  unsigned m_nameLine = 1;
  unsigned m_lastLine = 1;
};

}  // namespace

SourceFacts ReadSource(std::string_view bytes, ComponentKind kind, std::string_view expectedName) {
  const std::string text = automation::Windows1252ToUtf8(bytes);
  const Header header(text, kind);
  SourceReader reader(kind);
  for (const Statement& statement : SplitStatements(header.Rest(), header.NextLine())) reader.Add(statement);
  return reader.Finish(expectedName);
}

}  // namespace hearthmake::vb6
