#pragma once

#include <string>

#include "automation/Utf.hpp"
#include "vbscript/syntax/Ast.hpp"

namespace hearthmake::vbscript::test {

// Prints trees of scripts in one line, short enough to be an expectation:
//   expressions   1  1& (Long)  1.5# (Double)  "text"  date(36526)  (+ a b)  (not a)  [a] (in parentheses)
//                 f(a, , b)  a.b  .b  new C
//   statements    separated by "; ", blocks in braces: x := 1; call f(1); if a {x := 1} else {x := 2}
class TreePrinter {
 public:
  explicit TreePrinter(const Symbols& symbols) : m_symbols(symbols) {}

  std::string Print(const Expression& expression) const {
    switch (expression.kind) {
      case ExpressionKind::Literal: return PrintLiteral(As<Literal>(expression));
      case ExpressionKind::Name: return Spell(As<Name>(expression).symbol);
      case ExpressionKind::Member:
        return Print(*As<Member>(expression).object) + "." + Spell(As<Member>(expression).member);
      case ExpressionKind::WithMember: return "." + Spell(As<Member>(expression).member);
      case ExpressionKind::Call:
        return Print(*As<Call>(expression).callee) + "(" + PrintList(As<Call>(expression).arguments) + ")";
      case ExpressionKind::Me: return "me";
      case ExpressionKind::New: return "new " + Spell(As<New>(expression).className);
      case ExpressionKind::Unary: return PrintUnary(As<Unary>(expression));
      case ExpressionKind::Binary: return PrintBinary(As<Binary>(expression));
      case ExpressionKind::Parenthesized: return "[" + Print(*As<Parenthesized>(expression).inner) + "]";
      case ExpressionKind::Omitted: return "";
    }
    return "?";
  }

  std::string Print(Block block) const {
    std::string text;
    for (const Statement* statement : block) text += (text.empty() ? "" : "; ") + Print(*statement);
    return text;
  }

  std::string Print(const Statement& statement) const {
    switch (statement.kind) {
      case StatementKind::Dim: return PrintDim(As<Dim>(statement));
      case StatementKind::ReDim: return PrintReDim(As<ReDim>(statement));
      case StatementKind::Erase: return "erase " + PrintList(As<Erase>(statement).arrays);
      case StatementKind::Const: return PrintConst(As<Const>(statement));
      case StatementKind::Assign: return PrintAssign(As<Assign>(statement));
      case StatementKind::Set: return "set " + PrintAssign(As<Assign>(statement));
      case StatementKind::Call: return "call " + Print(*As<CallStatement>(statement).call);
      case StatementKind::If: return PrintIf(As<If>(statement));
      case StatementKind::Select: return PrintSelect(As<Select>(statement));
      case StatementKind::For: return PrintFor(As<For>(statement));
      case StatementKind::ForEach: return PrintForEach(As<ForEach>(statement));
      case StatementKind::Loop: return PrintLoop(As<Loop>(statement));
      case StatementKind::With:
        return "with " + Print(*As<With>(statement).object) + Braced(As<With>(statement).body);
      case StatementKind::Exit: return PrintExit(As<Exit>(statement).exit);
      case StatementKind::OnError:
        return As<OnError>(statement).isResumeNext ? "on error resume next" : "on error goto 0";
      case StatementKind::Stop: return "stop";
      case StatementKind::Procedure: return PrintProcedure(As<Procedure>(statement));
      case StatementKind::Class: return PrintClass(As<Class>(statement));
    }
    return "?";
  }

 private:
  template <class Node, class Base>
  static const Node& As(const Base& node) {
    return static_cast<const Node&>(node);
  }

  std::string Spell(Symbol symbol) const { return m_symbols.Utf8(symbol); }
  static std::string Quote(std::u16string_view text) { return "\"" + automation::Utf16ToUtf8(text) + "\""; }
  static std::string Number(double value) {
    std::string text = std::to_string(value);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') text.pop_back();
    return text;
  }

  static std::string PrintLiteral(const Literal& literal) {
    using automation::VariantType;
    switch (literal.type) {
      case VariantType::Empty: return "empty";
      case VariantType::Null: return "null";
      case VariantType::Object: return "nothing";
      case VariantType::Integer: return std::to_string(literal.whole);
      case VariantType::Long: return std::to_string(literal.whole) + "&";
      case VariantType::Double: return Number(literal.number) + "#";
      case VariantType::Date: return "date(" + Number(literal.number) + ")";
      case VariantType::Boolean: return literal.whole == -1 ? "true" : literal.whole == 0 ? "false" : "?";
      case VariantType::String: return Quote(literal.text);
      default: return "?";
    }
  }

  std::string PrintUnary(const Unary& unary) const {
    const char* op = unary.op == UnaryOperator::Negate ? "-" : unary.op == UnaryOperator::Plus ? "+" : "not";
    return std::string("(") + op + " " + Print(*unary.operand) + ")";
  }

  std::string PrintBinary(const Binary& binary) const {
    static constexpr const char* kOperators[] = {
        "^", "*", "/",  "\\", "mod", "+",   "-",  "&",   "=",   "<>",
        "<", ">", "<=", ">=", "is",  "and", "or", "xor", "eqv", "imp"};
    return std::string("(") + kOperators[static_cast<std::size_t>(binary.op)] + " " + Print(*binary.left) +
           " " + Print(*binary.right) + ")";
  }

  std::string PrintList(std::span<Expression* const> items) const {
    std::string text;
    for (const Expression* item : items) text += (item == items.front() ? "" : ", ") + Print(*item);
    return text;
  }

  std::string Braced(Block block) const { return " {" + Print(block) + "}"; }

  std::string PrintDeclarator(const Declarator& name) const {
    if (!name.isArray) return Spell(name.name);
    std::string bounds;
    for (const std::int32_t bound : name.upperBounds)
      bounds += (bounds.empty() ? "" : ", ") + std::to_string(bound);
    return Spell(name.name) + "(" + bounds + ")";
  }

  std::string PrintDim(const Dim& dim) const {
    std::string text = dim.visibility == Visibility::Private ? "private" : "dim";
    for (const Declarator& name : dim.names)
      text += (&name == &dim.names.front() ? " " : ", ") + PrintDeclarator(name);
    return text;
  }

  std::string PrintReDim(const ReDim& redim) const {
    std::string text = redim.isPreserving ? "redim preserve" : "redim";
    for (const ReDim::Target& target : redim.targets) {
      text += (&target == &redim.targets.front() ? " " : ", ") + Print(*target.array) + "(" +
              PrintList(target.upperBounds) + ")";
    }
    return text;
  }

  std::string PrintConst(const Const& statement) const {
    std::string text = statement.visibility == Visibility::Private ? "private const" : "const";
    for (const Const::Constant& constant : statement.constants) {
      text += (&constant == &statement.constants.front() ? " " : ", ") + Spell(constant.name) + " = " +
              Print(*constant.value);
    }
    return text;
  }

  std::string PrintAssign(const Assign& assign) const {
    return Print(*assign.target) + " := " + Print(*assign.value);
  }

  std::string PrintIf(const If& statement) const {
    std::string text;
    for (const If::Branch& branch : statement.branches) {
      text += (text.empty() ? "if " : " elseif ") + Print(*branch.condition) + Braced(branch.body);
    }
    return statement.otherwise.empty() ? text : text + " else" + Braced(statement.otherwise);
  }

  std::string PrintSelect(const Select& select) const {
    std::string text = "select " + Print(*select.selector);
    for (const Select::Case& oneCase : select.cases) {
      text += " case " + PrintList(oneCase.values) + Braced(oneCase.body);
    }
    return select.otherwise.empty() ? text : text + " else" + Braced(select.otherwise);
  }

  std::string PrintFor(const For& loop) const {
    std::string text =
        "for " + Print(*loop.variable) + " = " + Print(*loop.start) + " to " + Print(*loop.end);
    if (loop.step != nullptr) text += " step " + Print(*loop.step);
    return text + Braced(loop.body);
  }

  std::string PrintForEach(const ForEach& loop) const {
    return "each " + Print(*loop.variable) + " in " + Print(*loop.group) + Braced(loop.body);
  }

  std::string PrintLoop(const Loop& loop) const {
    std::string test;
    if (loop.test != Loop::Test::None) {
      test = (loop.test == Loop::Test::While ? " while " : " until ") + Print(*loop.condition);
    }
    const std::string word = loop.isWend ? "wend" : "do";
    return loop.isTestedFirst ? word + test + Braced(loop.body) : word + Braced(loop.body) + test;
  }

  static std::string PrintExit(ExitKind exit) {
    static constexpr const char* kWords[] = {"do", "for", "sub", "function", "property"};
    return std::string("exit ") + kWords[static_cast<std::size_t>(exit)];
  }

  std::string PrintProcedure(const Procedure& procedure) const {
    static constexpr const char* kWords[] = {"sub ", "function ", "get ", "let ", "set "};
    std::string text = procedure.visibility == Visibility::Private ? "private " : "";
    if (procedure.isDefault) text += "default ";
    text += kWords[static_cast<std::size_t>(procedure.procedure)] + Spell(procedure.name) + "(";
    for (const ParameterNode& parameter : procedure.parameters) {
      text += &parameter == &procedure.parameters.front() ? "" : ", ";
      text += (parameter.isByValue ? "byval " : "") + Spell(parameter.name) + (parameter.isArray ? "()" : "");
    }
    return text + ")" + Braced(procedure.body);
  }

  std::string PrintClass(const Class& statement) const {
    std::string text = "class " + Spell(statement.name) + " {";
    const char* separator = "";
    for (const Class::Field& field : statement.fields) {
      text += separator + std::string(field.visibility == Visibility::Private ? "private " : "public ") +
              PrintDeclarator(field.declarator);
      separator = "; ";
    }
    for (const Const* constants : statement.constants) {
      text += separator + Print(*constants);
      separator = "; ";
    }
    for (const Procedure* procedure : statement.procedures) {
      text += separator + Print(*procedure);
      separator = "; ";
    }
    return text + "}";
  }

  const Symbols& m_symbols;
};

}  // namespace hearthmake::vbscript::test
