#include "vb6/Declarations.hpp"

#include <array>
#include <string>
#include <utility>

#include "vb6/Text.hpp"

namespace hearthmake::vb6 {
namespace {

bool IsWordCharacter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
         static_cast<unsigned char>(c) >= 0x80;
}

// A statement, word by word: names, [names], texts and single other characters.
class Words {
 public:
  explicit Words(std::string_view text) : m_rest(text) { Advance(); }

  std::string_view Current() const { return m_current; }
  bool AtEnd() const { return m_current.empty(); }
  bool AtName() const { return !AtEnd() && (IsWordCharacter(m_current[0]) || m_current[0] == '['); }
  bool Is(std::string_view word) const { return EqualNoCase(m_current, word); }

  std::string_view Take() {
    const std::string_view word = m_current;
    Advance();
    return word;
  }
  bool TakeIf(std::string_view word) {
    if (!Is(word)) return false;
    Advance();
    return true;
  }

 private:
  void Advance() {
    m_rest = Trim(m_rest);
    std::size_t length = 0;
    if (m_rest.empty()) {
      m_current = {};
      return;
    }
    if (IsWordCharacter(m_rest[0])) {
      while (length < m_rest.size() && IsWordCharacter(m_rest[length])) ++length;
    } else if (m_rest[0] == '"' || m_rest[0] == '[') {
      const std::size_t end = m_rest.find(m_rest[0] == '"' ? '"' : ']', 1);
      length = end == std::string_view::npos ? m_rest.size() : end + 1;
    } else {
      length = 1;
    }
    m_current = m_rest.substr(0, length);
    m_rest.remove_prefix(length);
  }

  std::string_view m_rest;
  std::string_view m_current;
};

struct TypeName {
  std::string_view name;
  char suffix;  // the character that declares the type behind a name, or a blank
  VarType type;
};

constexpr std::array<TypeName, 14> kTypes = {{
    {"Boolean", ' ', VarType::Boolean},
    {"Byte", ' ', VarType::Byte},
    {"Integer", '%', VarType::Integer},
    {"Long", '&', VarType::Long},
    {"Single", '!', VarType::Single},
    {"Double", '#', VarType::Double},
    {"Currency", '@', VarType::Currency},
    {"Date", ' ', VarType::Date},
    {"String", '$', VarType::String},
    {"Object", ' ', VarType::Dispatch},
    {"Variant", ' ', VarType::Variant},
    {"IUnknown", ' ', VarType::Unknown},
    {"Collection", ' ', VarType::Dispatch},
    {"Any", ' ', VarType::Variant},
}};

// A declared type: how it is written, and what it is in a type library.
struct Declared {
  std::string text = "variant";
  DeclaredType type;
};

VarType TypeOf(std::string_view name) {
  for (const TypeName& known : kTypes) {
    if (EqualNoCase(known.name, name)) return known.type;
  }
  return VarType::Variant;  // a class, an enumeration or a record: the sources don't say which
}

void TakeSuffix(Words& words, Declared& declared) {
  for (const TypeName& known : kTypes) {
    if (known.suffix == ' ' || words.AtEnd() || words.Current()[0] != known.suffix) continue;
    declared = {Lower(known.name), {known.type, declared.type.array}};
    words.Take();
    return;
  }
}

void TakeArrayMark(Words& words, Declared& declared) {
  if (!words.Is("(")) return;
  while (!words.AtEnd() && !words.Is(")")) words.Take();
  words.TakeIf(")");
  declared.type.array = true;
}

void TakeAsClause(Words& words, Declared& declared) {
  if (!words.TakeIf("As")) return;
  words.TakeIf("New");
  std::string name(words.Take());
  while (words.TakeIf(".")) name += "." + std::string(words.Take());
  declared.text = Lower(name);
  declared.type.type = TypeOf(name);
  if (words.TakeIf("*")) declared.text += "*" + std::string(words.Take());
  if (words.Is("(")) TakeArrayMark(words, declared);  // a function's result: As String()
}

std::string SpellingOf(const Declared& declared) { return declared.text + (declared.type.array ? "()" : ""); }

void SkipDefault(Words& words) {
  int depth = 0;
  while (!words.AtEnd() && (depth > 0 || (!words.Is(",") && !words.Is(")")))) {
    if (words.Is("(")) ++depth;
    if (words.Is(")")) --depth;
    words.Take();
  }
}

std::string WithoutBrackets(std::string_view name) {
  if (name.size() > 2 && name.front() == '[') name = name.substr(1, name.size() - 2);
  return std::string(name);
}

// One parameter; its spelling is added to the signature.
Parameter TakeParameter(Words& words, std::string& signature) {
  Parameter parameter;
  for (;;) {
    if (words.TakeIf("Optional")) {
      parameter.optional = true;
      signature += "optional ";
    } else if (words.TakeIf("ParamArray")) {
      parameter.list = true;
      signature += "paramarray ";
    } else if (words.TakeIf("ByVal")) {
      parameter.byReference = false;
    } else if (!words.TakeIf("ByRef")) {
      break;
    }
  }
  parameter.name = WithoutBrackets(words.Take());
  Declared declared;
  TakeSuffix(words, declared);
  TakeArrayMark(words, declared);
  TakeAsClause(words, declared);
  if (words.TakeIf("=")) SkipDefault(words);
  parameter.type = declared.type;
  signature += (parameter.byReference ? "byref " : "byval ") + SpellingOf(declared);
  return parameter;
}

std::vector<Parameter> TakeParameters(Words& words, std::string& signature) {
  std::vector<Parameter> parameters;
  signature += '(';
  if (words.TakeIf("(")) {
    while (!words.AtEnd() && !words.Is(")")) {
      if (!parameters.empty()) signature += ", ";
      parameters.push_back(TakeParameter(words, signature));
      while (!words.AtEnd() && !words.Is(",") && !words.Is(")")) words.Take();
      words.TakeIf(",");
    }
    words.TakeIf(")");
  }
  signature += ')';
  return parameters;
}

std::string_view KindWord(MemberKind kind) {
  constexpr std::array<std::string_view, 5> kWords = {"method ", "get ", "let ", "set ", "event "};
  return kWords[static_cast<std::size_t>(kind)];
}

// The part of a declaration that follows its keywords: name, parameters, result.
Member TakeMember(Words& words, MemberKind kind, bool hasResult) {
  Member member;
  member.kind = kind;
  member.name = WithoutBrackets(words.Take());
  member.signature = std::string(KindWord(kind)) + Lower(member.name);
  Declared result;
  TakeSuffix(words, result);
  member.parameters = TakeParameters(words, member.signature);
  TakeAsClause(words, result);
  if (hasResult) {
    member.result = result.type;
    member.signature += " as " + SpellingOf(result);
  }
  return member;
}

Member VariableMember(MemberKind kind, const std::string& name, const Declared& declared) {
  Member member;
  member.kind = kind;
  member.name = name;
  member.signature = std::string(KindWord(kind)) + Lower(name);
  if (kind == MemberKind::Get) {
    member.result = declared.type;
    member.signature += "() as " + SpellingOf(declared);
  } else {
    member.parameters.push_back({"", declared.type, false, false, false});
    member.signature += "(byval " + SpellingOf(declared) + ")";
  }
  return member;
}

std::vector<Member> TakeVariables(Words& words) {
  std::vector<Member> members;
  do {
    words.TakeIf("WithEvents");
    if (!words.AtName()) break;
    const std::string name = WithoutBrackets(words.Take());
    Declared declared;
    TakeSuffix(words, declared);
    TakeArrayMark(words, declared);
    TakeAsClause(words, declared);
    members.push_back(VariableMember(MemberKind::Get, name, declared));
    const bool isObject = declared.type.type == VarType::Dispatch || declared.type.type == VarType::Unknown;
    members.push_back(VariableMember(isObject ? MemberKind::Set : MemberKind::Let, name, declared));
  } while (words.TakeIf(","));
  return members;
}

std::optional<ProcedureKind> ProcedureOf(std::string_view word) {
  if (EqualNoCase(word, "Sub")) return ProcedureKind::Sub;
  if (EqualNoCase(word, "Function")) return ProcedureKind::Function;
  if (EqualNoCase(word, "Property")) return ProcedureKind::Property;
  return std::nullopt;
}

bool IsPropertyHalf(const Words& words) { return words.Is("Get") || words.Is("Let") || words.Is("Set"); }

MemberKind PropertyHalf(std::string_view word) {
  if (EqualNoCase(word, "Get")) return MemberKind::Get;
  return EqualNoCase(word, "Let") ? MemberKind::Let : MemberKind::Set;
}

}  // namespace

std::string_view ProcedureWord(ProcedureKind kind) {
  constexpr std::array<std::string_view, 3> kWords = {"Sub", "Function", "Property"};
  return kWords[static_cast<std::size_t>(kind)];
}

std::optional<ProcedureKind> OpenedProcedure(std::string_view statement) {
  Words words(statement);
  while (words.TakeIf("Public") || words.TakeIf("Private") || words.TakeIf("Friend") ||
         words.TakeIf("Static")) {
  }
  const auto kind = ProcedureOf(words.Current());
  if (!kind) return std::nullopt;
  words.Take();
  if (*kind == ProcedureKind::Property) {
    if (!IsPropertyHalf(words)) return std::nullopt;
    words.Take();
  }
  return words.AtName() ? kind : std::nullopt;
}

std::optional<ProcedureKind> ClosedProcedure(std::string_view statement) {
  Words words(statement);
  return words.TakeIf("End") ? ProcedureOf(words.Current()) : std::nullopt;
}

std::vector<Member> PublicMembers(std::string_view statement) {
  Words words(statement);
  const bool isPublic = words.TakeIf("Public");
  if (words.Is("Private") || words.Is("Friend")) return {};
  words.TakeIf("Static");
  if (words.TakeIf("Event")) return {TakeMember(words, MemberKind::Event, false)};
  if (OpenedProcedure(statement)) {
    const ProcedureKind procedure = *ProcedureOf(words.Take());
    if (procedure != ProcedureKind::Property) {
      return {TakeMember(words, MemberKind::Method, procedure == ProcedureKind::Function)};
    }
    const MemberKind kind = PropertyHalf(words.Take());
    return {TakeMember(words, kind, kind == MemberKind::Get)};
  }
  const bool otherDeclaration =
      words.Is("Enum") || words.Is("Type") || words.Is("Const") || words.Is("Declare");
  if (!isPublic || otherDeclaration) return {};
  return TakeVariables(words);
}

}  // namespace hearthmake::vb6
