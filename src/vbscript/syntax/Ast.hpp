#pragma once

#include <cstdint>
#include <memory>
#include <memory_resource>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "automation/Variant.hpp"
#include "vbscript/syntax/Symbols.hpp"

// The tree that the parser makes of a source and the compiler reads. Nodes live in the arena of their
// Script and are freed with it; they refer to each other by plain pointers and spans.
namespace hearthmake::vbscript {

// A place in the source text, in UTF-16 units; line and column are worked out from it when asked.
using Offset = std::uint32_t;

// ---- Expressions

enum class ExpressionKind : std::uint8_t {
  Literal,
  Name,
  Member,
  WithMember,
  Call,
  Me,
  New,
  Unary,
  Binary,
  Parenthesized,
  Omitted,
};

struct Expression {
  ExpressionKind kind;
  Offset offset;  // where a message about this expression points to
};

// A number, text, date, True, False, Empty, Null or Nothing. Only numbers, dates and Booleans are kept in
// the node itself; a text is a span of units in the arena, since nodes are never destroyed one by one.
struct Literal : Expression {
  automation::VariantType type;
  union {
    std::int32_t whole;  // Integer, Long, Boolean (-1 or 0)
    double number;       // Double, Date
  };
  std::u16string_view text;
};

struct Name : Expression {
  Symbol symbol;
};

// object.member, and .member inside With (whose object is null)
struct Member : Expression {
  Expression* object;
  Symbol member;
};

// callee(arguments): a call of a procedure or method, the element of an array or the default member of an
// object; which one it is shows only when it runs. An argument that was left out is Omitted; one in
// parentheses of its own is Parenthesized and goes by value.
struct Call : Expression {
  Expression* callee;
  std::span<Expression*> arguments;
};

struct New : Expression {
  Symbol className;
};

enum class UnaryOperator : std::uint8_t { Negate, Plus, Not };

struct Unary : Expression {
  UnaryOperator op;
  Expression* operand;
};

enum class BinaryOperator : std::uint8_t {
  Power,
  Multiply,
  Divide,
  IntegerDivide,
  Modulo,
  Add,
  Subtract,
  Concatenate,
  Equal,
  NotEqual,
  Less,
  Greater,
  LessOrEqual,
  GreaterOrEqual,
  Is,
  And,
  Or,
  Xor,
  Eqv,
  Imp,
};

// Chains of operators of one precedence lean to the left and can be very long: walk the left side in a
// loop, not by recursion.
struct Binary : Expression {
  BinaryOperator op;
  Expression* left;
  Expression* right;
};

struct Parenthesized : Expression {
  Expression* inner;
};

// ---- Statements

enum class StatementKind : std::uint8_t {
  Dim,
  ReDim,
  Erase,
  Const,
  Assign,
  Set,
  Call,
  If,
  Select,
  For,
  ForEach,
  Loop,
  With,
  Exit,
  OnError,
  Stop,
  Procedure,
  Class,
};

struct Statement {
  StatementKind kind;
  Offset offset;
};

using Block = std::span<Statement*>;

enum class Visibility : std::uint8_t { Public, Private };

// One name of Dim, Public, Private or of a class's fields.
struct Declarator {
  Offset offset;
  Symbol name;
  bool isArray;                               // written with parentheses
  std::span<const std::int32_t> upperBounds;  // of a fixed array; empty for a dynamic one: a()
};

struct Dim : Statement {
  Visibility visibility;
  std::span<Declarator> names;
};

struct ReDim : Statement {
  struct Target {
    Expression* array;  // Name, Member or WithMember
    std::span<Expression*> upperBounds;
  };
  bool isPreserving;
  std::span<Target> targets;
};

struct Erase : Statement {
  std::span<Expression*> arrays;
};

// The value is a literal with signs and parentheses; the language takes no names here.
struct Const : Statement {
  struct Constant {
    Offset offset;
    Symbol name;
    Expression* value;
  };
  Visibility visibility;
  std::span<Constant> constants;
};

// target = value and Set target = value. The target is a Name, Member, WithMember or Call.
struct Assign : Statement {
  Expression* target;
  Expression* value;
};

// A call whose result is not wanted. The expression is a Call, or a Name, Member or WithMember without
// arguments. In `f (x)` without Call the argument is Parenthesized.
struct CallStatement : Statement {
  Expression* call;
};

struct If : Statement {
  struct Branch {
    Offset offset;  // of the If or ElseIf
    Expression* condition;
    Block body;
  };
  std::span<Branch> branches;
  Block otherwise;  // empty without Else
};

struct Select : Statement {
  struct Case {
    Offset offset;
    std::span<Expression*> values;
    Block body;
  };
  Expression* selector;
  std::span<Case> cases;
  Block otherwise;
};

struct For : Statement {
  Expression* variable;  // Name, Member or Call
  Expression* start;
  Expression* end;
  Expression* step;  // null without Step
  Block body;
  Offset nextOffset;  // of Next
};

struct ForEach : Statement {
  Expression* variable;
  Expression* group;
  Block body;
  Offset nextOffset;
};

// Do … Loop in all five forms and While … Wend.
struct Loop : Statement {
  enum class Test : std::uint8_t { None, While, Until };
  Test test;
  bool isTestedFirst;
  bool isWend;            // While … Wend, which Exit Do does not leave
  Expression* condition;  // null without test
  Block body;
  Offset endOffset;  // of Loop or Wend
};

struct With : Statement {
  Expression* object;
  Block body;
};

enum class ExitKind : std::uint8_t { Do, For, Sub, Function, Property };

struct Exit : Statement {
  ExitKind exit;
};

struct OnError : Statement {
  bool isResumeNext;  // else GoTo 0
};

enum class ProcedureKind : std::uint8_t { Sub, Function, PropertyGet, PropertyLet, PropertySet };

struct ParameterNode {
  Offset offset;
  Symbol name;
  bool isByValue;
  bool isArray;  // written with empty parentheses
};

struct Procedure : Statement {
  ProcedureKind procedure;
  Visibility visibility;
  bool isDefault;
  Symbol name;
  std::span<ParameterNode> parameters;
  Block body;
  Offset endOffset;  // of End Sub …
};

struct Class : Statement {
  struct Field {
    Visibility visibility;
    Declarator declarator;
  };
  Symbol name;
  std::span<Field> fields;
  std::span<Procedure*> procedures;
  std::span<Const*> constants;
};

// ---- The whole

// A parsed source with everything that belongs to it. Error messages and inline tables refer to it, so it
// lives as long as the code that was compiled from it.
class Script {
 public:
  explicit Script(std::u16string_view source) : text(source) {}
  Script(const Script&) = delete;
  Script& operator=(const Script&) = delete;

  // The source, copied; literals refer to it or to the arena.
  const std::u16string text;
  bool hasOptionExplicit = false;
  // Statements in their order; procedures and classes stand among them, where they do nothing, and in lists
  // of their own, since they are known before the first statement runs.
  Block body;
  std::vector<Procedure*> procedures;
  std::vector<Class*> classes;

  // Makes a node of plain data; its members are set by the caller, all others are zero.
  template <class Node>
  Node* Make() {
    static_assert(std::is_trivially_destructible_v<Node>);
    return new (m_arena.allocate(sizeof(Node), alignof(Node))) Node{};
  }
  template <class T>
  std::span<T> Keep(const std::vector<T>& items) {
    static_assert(std::is_trivially_destructible_v<T>);
    if (items.empty()) return {};
    T* place = static_cast<T*>(m_arena.allocate(sizeof(T) * items.size(), alignof(T)));
    std::uninitialized_copy(items.begin(), items.end(), place);
    return {place, items.size()};
  }
  std::u16string_view Keep(std::u16string_view units) {
    auto* place =
        static_cast<char16_t*>(m_arena.allocate(sizeof(char16_t) * (units.size() + 1), alignof(char16_t)));
    std::uninitialized_copy(units.begin(), units.end(), place);
    return {place, units.size()};
  }

 private:
  std::pmr::monotonic_buffer_resource m_arena;
};

struct LineAndColumn {
  std::int32_t line = 0;    // from 1
  std::int32_t column = 0;  // from 1, in UTF-16 units
};

LineAndColumn Locate(std::u16string_view source, Offset offset);
// The line that an offset stands in, without its line end.
std::u16string_view LineAt(std::u16string_view source, Offset offset);

}  // namespace hearthmake::vbscript
