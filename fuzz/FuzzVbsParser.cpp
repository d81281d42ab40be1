// Scripts: UTF-16 behind its byte order mark, else one unit a byte. Whoever walks a tree may do it by
// recursion, save for the left side of operators; so no tree may be higher than the parser promises, and no
// place may lie outside the source.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <string>

#include "vbscript/Errors.hpp"
#include "vbscript/syntax/Parser.hpp"

namespace {

using namespace hearthmake::vbscript;

std::u16string Units(const std::uint8_t* data, std::size_t size) {
  if (size < 2 || data[0] != 0xFF || data[1] != 0xFE) return std::u16string(data, data + size);
  std::u16string units;
  for (std::size_t i = 2; i + 1 < size; i += 2) {
    units.push_back(static_cast<char16_t>(data[i] | data[i + 1] << 8));
  }
  return units;
}

// Walks everything that a script consists of.
class Walker {
 public:
  explicit Walker(std::size_t sourceSize) : m_sourceSize(sourceSize) {}

  void Walk(Block block) {
    const Level level(*this);
    for (const Statement* statement : block) Walk(*statement);
  }

 private:
  // Statements nest as deep as the parser promises, and below each of them its expressions do.
  class Level {
   public:
    explicit Level(Walker& walker) : m_walker(walker) {
      if (++walker.m_height > 2 * kDeepestNesting) std::abort();
    }
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;
    ~Level() { --m_walker.m_height; }

   private:
    Walker& m_walker;
  };

  template <class Node, class Base>
  static const Node& As(const Base& node) {
    return static_cast<const Node&>(node);
  }

  void Check(Offset offset) const {
    if (offset > m_sourceSize) std::abort();
  }

  void Walk(std::span<Expression* const> expressions) {
    for (const Expression* expression : expressions) Walk(*expression);
  }
  void WalkIfThere(const Expression* expression) {
    if (expression != nullptr) Walk(*expression);
  }

  void Walk(const Expression& expression) {
    const Level level(*this);
    Check(expression.offset);
    switch (expression.kind) {
      case ExpressionKind::Member: Walk(*As<Member>(expression).object); break;
      case ExpressionKind::Call:
        Walk(*As<Call>(expression).callee);
        Walk(As<Call>(expression).arguments);
        break;
      case ExpressionKind::Unary: Walk(*As<Unary>(expression).operand); break;
      case ExpressionKind::Parenthesized: Walk(*As<Parenthesized>(expression).inner); break;
      case ExpressionKind::Binary: {
        const Expression* left = &expression;
        for (; left->kind == ExpressionKind::Binary; left = As<Binary>(*left).left) {
          Walk(*As<Binary>(*left).right);
        }
        Walk(*left);
        break;
      }
      case ExpressionKind::Literal:
      case ExpressionKind::Name:
      case ExpressionKind::WithMember:
      case ExpressionKind::Me:
      case ExpressionKind::New:
      case ExpressionKind::Omitted: break;
    }
  }

  void Walk(const Statement& statement) {
    Check(statement.offset);
    switch (statement.kind) {
      case StatementKind::Dim:
        for (const Declarator& name : As<Dim>(statement).names) Check(name.offset);
        break;
      case StatementKind::ReDim:
        for (const ReDim::Target& target : As<ReDim>(statement).targets) {
          Walk(*target.array);
          Walk(target.upperBounds);
        }
        break;
      case StatementKind::Erase: Walk(As<Erase>(statement).arrays); break;
      case StatementKind::Const:
        for (const Const::Constant& constant : As<Const>(statement).constants) Walk(*constant.value);
        break;
      case StatementKind::Assign:
      case StatementKind::Set:
        Walk(*As<Assign>(statement).target);
        Walk(*As<Assign>(statement).value);
        break;
      case StatementKind::Call: Walk(*As<CallStatement>(statement).call); break;
      case StatementKind::If:
        for (const If::Branch& branch : As<If>(statement).branches) {
          Walk(*branch.condition);
          Walk(branch.body);
        }
        Walk(As<If>(statement).otherwise);
        break;
      case StatementKind::Select:
        Walk(*As<Select>(statement).selector);
        for (const Select::Case& oneCase : As<Select>(statement).cases) {
          Walk(oneCase.values);
          Walk(oneCase.body);
        }
        Walk(As<Select>(statement).otherwise);
        break;
      case StatementKind::For:
        Walk(*As<For>(statement).variable);
        Walk(*As<For>(statement).start);
        Walk(*As<For>(statement).end);
        WalkIfThere(As<For>(statement).step);
        Walk(As<For>(statement).body);
        Check(As<For>(statement).nextOffset);
        break;
      case StatementKind::ForEach:
        Walk(*As<ForEach>(statement).variable);
        Walk(*As<ForEach>(statement).group);
        Walk(As<ForEach>(statement).body);
        Check(As<ForEach>(statement).nextOffset);
        break;
      case StatementKind::Loop:
        WalkIfThere(As<Loop>(statement).condition);
        Walk(As<Loop>(statement).body);
        Check(As<Loop>(statement).endOffset);
        break;
      case StatementKind::With:
        Walk(*As<With>(statement).object);
        Walk(As<With>(statement).body);
        break;
      case StatementKind::Procedure:
        Walk(As<Procedure>(statement).body);
        Check(As<Procedure>(statement).endOffset);
        break;
      case StatementKind::Class:
        for (const Procedure* procedure : As<Class>(statement).procedures) Walk(*procedure);
        for (const Const* constants : As<Class>(statement).constants) Walk(*constants);
        break;
      case StatementKind::Exit:
      case StatementKind::OnError:
      case StatementKind::Stop: break;
    }
  }

  std::size_t m_sourceSize;
  int m_height = 0;
};

template <class Parse>
void Run(const std::u16string& source, Parse parse) {
  Symbols symbols;
  try {
    Walker(source.size()).Walk(parse(source, symbols)->body);
  } catch (const CompileError& error) {
    if (error.SourceOffset() > source.size()) std::abort();
    const LineAndColumn place = Locate(source, error.SourceOffset());
    const std::size_t lineSize = LineAt(source, error.SourceOffset()).size();
    // A place is in its line or at its end, which may be two units.
    if (place.line < 1 || place.column < 1) std::abort();
    if (static_cast<std::size_t>(place.column) > lineSize + 2) std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::u16string source = Units(data, size);
  Run(source, [](const auto& text, Symbols& symbols) { return ParseScript(text, symbols); });
  Run(source, [](const auto& text, Symbols& symbols) { return ParseExpression(text, symbols); });
  return 0;
}
