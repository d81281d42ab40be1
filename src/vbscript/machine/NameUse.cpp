#include "vbscript/machine/NameUse.hpp"

namespace hearthmake::vbscript {

NameUse::NameUse(Block body, Symbol execute, Symbol eval) : m_execute(execute), m_eval(eval) {
  Walk(body, 0);
}

void NameUse::Use(Symbol symbol) {
  if (symbol == m_execute || symbol == m_eval) runsText = true;
  if (usedSet.insert(symbol).second) used.push_back(symbol);
}

void NameUse::Walk(Block block, std::size_t depth) {
  for (const Statement* statement : block) WalkStatement(*statement, depth);
}

void NameUse::WalkTarget(const Expression* target) {
  if (target->kind == ExpressionKind::Call) {
    const auto& call = static_cast<const Call&>(*target);
    for (const Expression* argument : call.arguments) WalkExpression(argument);
    WalkTarget(call.callee);
  } else if (target->kind == ExpressionKind::Name) {
    const Symbol symbol = static_cast<const Name&>(*target).symbol;
    assigned.insert(symbol);
    Use(symbol);
  } else {
    WalkExpression(target);
  }
}

void NameUse::WalkExpression(const Expression* expression) {
  // Chains lean to the left and can be very long: the left side is a loop.
  while (expression != nullptr) {
    switch (expression->kind) {
      case ExpressionKind::Name: Use(static_cast<const Name&>(*expression).symbol); return;
      case ExpressionKind::Member: expression = static_cast<const Member&>(*expression).object; break;
      case ExpressionKind::Call: {
        const auto& call = static_cast<const Call&>(*expression);
        for (const Expression* argument : call.arguments) {
          const Expression* base = argument;
          while (base->kind == ExpressionKind::Call) base = static_cast<const Call&>(*base).callee;
          if (base->kind == ExpressionKind::Name) passed.insert(static_cast<const Name&>(*base).symbol);
          WalkExpression(argument);
        }
        expression = call.callee;
        break;
      }
      case ExpressionKind::Unary: expression = static_cast<const Unary&>(*expression).operand; break;
      case ExpressionKind::Binary: {
        const auto& binary = static_cast<const Binary&>(*expression);
        WalkExpression(binary.right);
        expression = binary.left;
        break;
      }
      case ExpressionKind::Parenthesized:
        expression = static_cast<const Parenthesized&>(*expression).inner;
        break;
      default: return;
    }
  }
}

void NameUse::WalkStatement(const Statement& statement, std::size_t depth) {
  switch (statement.kind) {
    case StatementKind::Dim:
      for (const Declarator& one : static_cast<const Dim&>(statement).names) declared.push_back(&one);
      break;
    case StatementKind::ReDim:
      for (const ReDim::Target& target : static_cast<const ReDim&>(statement).targets) {
        WalkTarget(target.array);
        if (target.array->kind == ExpressionKind::Name)
          redimmed.insert(static_cast<const Name&>(*target.array).symbol);
        for (const Expression* bound : target.upperBounds) WalkExpression(bound);
      }
      break;
    case StatementKind::Erase:
      for (const Expression* array : static_cast<const Erase&>(statement).arrays) WalkTarget(array);
      break;
    case StatementKind::Const: constants.push_back(&static_cast<const Const&>(statement)); break;
    case StatementKind::Assign:
    case StatementKind::Set: {
      const auto& assign = static_cast<const Assign&>(statement);
      WalkTarget(assign.target);
      WalkExpression(assign.value);
      break;
    }
    case StatementKind::Call: WalkExpression(static_cast<const CallStatement&>(statement).call); break;
    case StatementKind::If: {
      const auto& choice = static_cast<const If&>(statement);
      for (const If::Branch& branch : choice.branches) {
        WalkExpression(branch.condition);
        Walk(branch.body, depth);
      }
      Walk(choice.otherwise, depth);
      break;
    }
    case StatementKind::Select: {
      const auto& select = static_cast<const Select&>(statement);
      Hide(depth + 1);
      WalkExpression(select.selector);
      for (const Select::Case& one : select.cases) {
        for (const Expression* value : one.values) WalkExpression(value);
        Walk(one.body, depth + 1);
      }
      Walk(select.otherwise, depth + 1);
      break;
    }
    case StatementKind::For: {
      const auto& loop = static_cast<const For&>(statement);
      Hide(depth + 2);
      WalkTarget(loop.variable);
      WalkExpression(loop.start);
      WalkExpression(loop.end);
      WalkExpression(loop.step);
      Walk(loop.body, depth + 2);
      break;
    }
    case StatementKind::ForEach: {
      const auto& loop = static_cast<const ForEach&>(statement);
      Hide(depth + 2);
      WalkTarget(loop.variable);
      WalkExpression(loop.group);
      Walk(loop.body, depth + 2);
      break;
    }
    case StatementKind::Loop: {
      const auto& loop = static_cast<const Loop&>(statement);
      WalkExpression(loop.condition);
      Walk(loop.body, depth);
      break;
    }
    case StatementKind::With: {
      const auto& with = static_cast<const With&>(statement);
      Hide(depth + 1);
      WalkExpression(with.object);
      Walk(with.body, depth + 1);
      break;
    }
    default: break;
  }
}

}  // namespace hearthmake::vbscript
