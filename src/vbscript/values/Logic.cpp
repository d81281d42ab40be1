#include <cmath>
#include <cstdint>

#include "vbscript/Errors.hpp"
#include "vbscript/values/Conversions.hpp"
#include "vbscript/values/Operand.hpp"
#include "vbscript/values/Operators.hpp"

namespace hearthmake::vbscript {

using automation::VariantType;

namespace {

// An operand of And, Or …: bits, and the subtype that its side asks of the result. Null has no bits.
struct Bits {
  VariantType type = VariantType::Null;
  std::int32_t value = 0;

  bool IsNull() const { return type == VariantType::Null; }
};

// A text is a truth where it names one, a Long where it is a number.
Bits BitsOfText(const Variant& text) {
  if (const auto word = ParseBooleanWord(text.AsUtf16())) return {VariantType::Boolean, *word ? -1 : 0};
  return {VariantType::Long, ToLong32(text)};
}

Bits BitsOf(const Operand& operand) {
  switch (operand.Type()) {
    case VariantType::Null: return {};
    case VariantType::Empty: return {VariantType::Integer, 0};
    case VariantType::Boolean:
    case VariantType::Integer: return {operand.Type(), operand->AsInteger()};
    case VariantType::Byte: return {VariantType::Byte, operand->AsByte()};
    case VariantType::String: return BitsOfText(operand.Value());
    default: return {VariantType::Long, ToLong32(operand.Value())};
  }
}

Variant FromBits(const Bits& bits) {
  switch (bits.type) {
    case VariantType::Null: return Variant::Null();
    case VariantType::Boolean: return Variant::FromBoolean(bits.value != 0);
    case VariantType::Byte: return Variant::FromByte(static_cast<std::uint8_t>(bits.value));
    case VariantType::Integer: return Variant::FromInteger(static_cast<std::int16_t>(bits.value));
    default: return Variant::FromLong(bits.value);
  }
}

VariantType CommonType(const Bits& left, const Bits& right) {
  if (left.type == right.type) return left.type;
  const bool hasLong = left.type == VariantType::Long || right.type == VariantType::Long;
  return hasLong ? VariantType::Long : VariantType::Integer;
}

Bits Complement(const Bits& bits) { return {bits.type, ~bits.value}; }

// Null And 0 is 0 whatever Null stands for; with anything else it is unknown.
Bits Conjunction(const Bits& left, const Bits& right) {
  if (left.IsNull()) return right.value == 0 ? right : Bits{};
  if (right.IsNull()) return left.value == 0 ? left : Bits{};
  return {CommonType(left, right), left.value & right.value};
}

// Null Or a value that is not 0 is that value.
Bits Disjunction(const Bits& left, const Bits& right) {
  if (left.IsNull()) return right.value != 0 ? right : Bits{};
  if (right.IsNull()) return left.value != 0 ? left : Bits{};
  return {CommonType(left, right), left.value | right.value};
}

Bits Difference(const Bits& left, const Bits& right) {
  if (left.IsNull() || right.IsNull()) return {};
  return {CommonType(left, right), left.value ^ right.value};
}

struct Sides {
  Sides(const Variant& leftOperand, const Variant& rightOperand) {
    const Operand a(leftOperand);
    const Operand b(rightOperand);
    left = BitsOf(a);
    right = BitsOf(b);
  }
  Bits left;
  Bits right;
};

}  // namespace

Variant Not(const Variant& operand) {
  const Operand value(operand);
  return FromBits(Complement(BitsOf(value)));
}

Variant And(const Variant& left, const Variant& right) {
  const Sides sides(left, right);
  return FromBits(Conjunction(sides.left, sides.right));
}

Variant Or(const Variant& left, const Variant& right) {
  const Sides sides(left, right);
  return FromBits(Disjunction(sides.left, sides.right));
}

Variant Xor(const Variant& left, const Variant& right) {
  const Sides sides(left, right);
  return FromBits(Difference(sides.left, sides.right));
}

Variant Eqv(const Variant& left, const Variant& right) {
  const Sides sides(left, right);
  return FromBits(Complement(Difference(sides.left, sides.right)));
}

// Not left Or right.
Variant Imp(const Variant& left, const Variant& right) {
  const Sides sides(left, right);
  return FromBits(Disjunction(Complement(sides.left), sides.right));
}

bool IsTrue(const Variant& condition) {
  const Operand value(condition);
  return !value->IsNull() && ToBoolean1(value.Value());
}

}  // namespace hearthmake::vbscript
