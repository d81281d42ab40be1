#include <cmath>
#include <cstdint>
#include <limits>

#include "vbscript/Errors.hpp"
#include "vbscript/values/Conversions.hpp"
#include "vbscript/values/Dates.hpp"
#include "vbscript/values/Operand.hpp"
#include "vbscript/values/Operators.hpp"
#include "vbscript/values/SubtypeSet.hpp"
#include "vbscript/values/WideProduct.hpp"

namespace hearthmake::vbscript {

using automation::VariantType;

namespace {

// The subtype that whole numbers are computed in: the wider of the two, where Empty goes with its partner
// and truths count as Integer.
VariantType WholeType(SubtypeSet kinds) {
  if (kinds.Has(VariantType::Long)) return VariantType::Long;
  if (kinds.Has(VariantType::Byte) && kinds.IsOf({VariantType::Byte, VariantType::Empty}))
    return VariantType::Byte;
  return VariantType::Integer;
}

// Of a Single and a whole number: beside a Long a Single would lose digits.
VariantType RealType(SubtypeSet kinds) {
  return kinds.Has(VariantType::Long) ? VariantType::Double : VariantType::Single;
}

VariantType SumType(SubtypeSet kinds) {
  if (kinds.Has(VariantType::Null)) return VariantType::Null;
  if (kinds.Has(VariantType::Date)) return VariantType::Date;
  if (kinds.Has(VariantType::Currency)) return VariantType::Currency;
  if (kinds.HasAny({VariantType::String, VariantType::Double})) return VariantType::Double;
  return kinds.Has(VariantType::Single) ? RealType(kinds) : WholeType(kinds);
}

VariantType ProductType(SubtypeSet kinds) {
  if (kinds.Has(VariantType::Null)) return VariantType::Null;
  if (kinds.HasAny({VariantType::Date, VariantType::String, VariantType::Double})) return VariantType::Double;
  if (kinds.Has(VariantType::Currency))
    return kinds.Has(VariantType::Single) ? VariantType::Double : VariantType::Currency;
  return kinds.Has(VariantType::Single) ? RealType(kinds) : WholeType(kinds);
}

VariantType QuotientType(SubtypeSet kinds) {
  if (kinds.Has(VariantType::Null)) return VariantType::Null;
  const bool isSingle = kinds.Has(VariantType::Single) &&
                        kinds.IsOf({VariantType::Single, VariantType::Empty, VariantType::Boolean,
                                    VariantType::Byte, VariantType::Integer});
  return isSingle ? VariantType::Single : VariantType::Double;
}

// Of \ and Mod, which round both sides first.
VariantType RoundedType(SubtypeSet kinds) {
  if (kinds.Has(VariantType::Null)) return VariantType::Null;
  if (kinds.IsOf({VariantType::Byte})) return VariantType::Byte;
  return kinds.IsOf({VariantType::Empty, VariantType::Boolean, VariantType::Byte, VariantType::Integer})
             ? VariantType::Integer
             : VariantType::Long;
}

std::int64_t WholeOf(const Operand& operand) {
  switch (operand.Type()) {
    case VariantType::Empty: return 0;
    case VariantType::Byte: return operand->AsByte();
    case VariantType::Long: return operand->AsLong();
    default: return operand->AsInteger();
  }
}

double NumberOf(const Operand& operand) {
  return operand.Type() == VariantType::Double ? operand->AsDouble() : ToDouble64(operand.Value());
}

// A whole number in the subtype asked for, or the next one that can hold it.
Variant FromWhole(std::int64_t value, VariantType narrowest) {
  if (narrowest == VariantType::Byte && value >= 0 && value <= 255)
    return Variant::FromByte(static_cast<std::uint8_t>(value));
  if (narrowest != VariantType::Long && value >= -32768 && value <= 32767)
    return Variant::FromInteger(static_cast<std::int16_t>(value));
  if (value == static_cast<std::int32_t>(value)) return Variant::FromLong(static_cast<std::int32_t>(value));
  return Variant::FromDouble(static_cast<double>(value));
}

Variant FromFinite(double value) {
  if (!std::isfinite(value)) RaiseRuntime(number::kOverflow);
  return Variant::FromDouble(value);
}

// A result that a Single can't hold becomes a Double.
Variant FromSingleOrWider(double value) {
  const auto narrow = static_cast<float>(value);
  return std::isfinite(narrow) ? Variant::FromSingle(narrow) : FromFinite(value);
}

// A date that the calendar does not reach is a plain number.
Variant FromDateOrNumber(double value) {
  if (!(value > kFirstDate - 1 && value < kLastDate + 1)) return FromFinite(value);
  return Variant::FromDate(value);
}

Variant FromCurrency(bool hasOverflow, std::int64_t tenThousandths) {
  if (hasOverflow) RaiseRuntime(number::kOverflow);
  return Variant::FromCurrency(tenThousandths);
}

void CheckOperands(SubtypeSet kinds) {
  if (kinds.HasAny({VariantType::Array, VariantType::Error})) RaiseRuntime(number::kTypeMismatch);
}

constexpr std::uint64_t kUnitsOfCurrency = 10'000;

std::uint64_t Magnitude(std::int64_t number) {
  const auto bits = static_cast<std::uint64_t>(number);
  return number < 0 ? 0 - bits : bits;
}

Variant MultiplyCurrency(std::int64_t left, std::int64_t right) {
  const WideProduct product = MultiplyWide(Magnitude(left), Magnitude(right));  // hundred-millionths
  if (product.high >= kUnitsOfCurrency) return FromCurrency(true, 0);
  // A division by hand, in digits of 32 bits.
  const std::uint64_t upper = product.high << 32 | product.low >> 32;
  const std::uint64_t lower = (upper % kUnitsOfCurrency) << 32 | (product.low & 0xFFFFFFFF);
  std::uint64_t whole = (upper / kUnitsOfCurrency) << 32 | lower / kUnitsOfCurrency;
  const std::uint64_t rest = lower % kUnitsOfCurrency;
  if (rest > kUnitsOfCurrency / 2 || (rest == kUnitsOfCurrency / 2 && whole % 2 != 0)) ++whole;
  const bool isNegative = (left < 0) != (right < 0);
  const std::uint64_t largest =
      std::uint64_t{std::numeric_limits<std::int64_t>::max()} + (isNegative ? 1 : 0);
  return FromCurrency(whole > largest, static_cast<std::int64_t>(isNegative ? 0 - whole : whole));
}

// The two sides of \ and Mod, rounded.
struct Rounded {
  Rounded(const Operand& left, const Operand& right)
      : dividend(ToLong32(left.Value())), divisor(ToLong32(right.Value())) {
    if (divisor == 0) RaiseRuntime(number::kDivisionByZero);
  }
  std::int64_t dividend;
  std::int64_t divisor;
};

}  // namespace

Variant Add(const Variant& left, const Variant& right) {
  const Operand a(left);
  const Operand b(right);
  const SubtypeSet kinds(a.Type(), b.Type());
  // Two texts are joined, and a text beside Empty is one already.
  if (kinds.Has(VariantType::String) && kinds.IsOf({VariantType::String, VariantType::Empty}))
    return Concatenate(a.Value(), b.Value());
  CheckOperands(kinds);
  const VariantType type = SumType(kinds);
  switch (type) {
    case VariantType::Null: return Variant::Null();
    case VariantType::Double: return FromFinite(NumberOf(a) + NumberOf(b));
    case VariantType::Single: return FromSingleOrWider(NumberOf(a) + NumberOf(b));
    case VariantType::Date: return FromDateOrNumber(NumberOf(a) + NumberOf(b));
    case VariantType::Currency: {
      std::int64_t sum = 0;
      const bool hasOverflow = __builtin_add_overflow(ToCurrency64(a.Value()), ToCurrency64(b.Value()), &sum);
      return FromCurrency(hasOverflow, sum);
    }
    default: return FromWhole(WholeOf(a) + WholeOf(b), type);
  }
}

Variant Subtract(const Variant& left, const Variant& right) {
  const Operand a(left);
  const Operand b(right);
  const SubtypeSet kinds(a.Type(), b.Type());
  CheckOperands(kinds);
  const VariantType type = kinds.IsOf({VariantType::Date}) ? VariantType::Double : SumType(kinds);
  switch (type) {
    case VariantType::Null: return Variant::Null();
    case VariantType::Double: return FromFinite(NumberOf(a) - NumberOf(b));
    case VariantType::Single: return FromSingleOrWider(NumberOf(a) - NumberOf(b));
    case VariantType::Date: return FromDateOrNumber(NumberOf(a) - NumberOf(b));
    case VariantType::Currency: {
      std::int64_t difference = 0;
      const bool hasOverflow =
          __builtin_sub_overflow(ToCurrency64(a.Value()), ToCurrency64(b.Value()), &difference);
      return FromCurrency(hasOverflow, difference);
    }
    default: return FromWhole(WholeOf(a) - WholeOf(b), type);
  }
}

Variant Multiply(const Variant& left, const Variant& right) {
  const Operand a(left);
  const Operand b(right);
  const SubtypeSet kinds(a.Type(), b.Type());
  CheckOperands(kinds);
  const VariantType type = ProductType(kinds);
  switch (type) {
    case VariantType::Null: return Variant::Null();
    case VariantType::Double: return FromFinite(NumberOf(a) * NumberOf(b));
    case VariantType::Single: return FromSingleOrWider(NumberOf(a) * NumberOf(b));
    case VariantType::Currency: return MultiplyCurrency(ToCurrency64(a.Value()), ToCurrency64(b.Value()));
    default: return FromWhole(WholeOf(a) * WholeOf(b), type);
  }
}

Variant Divide(const Variant& left, const Variant& right) {
  const Operand a(left);
  const Operand b(right);
  const SubtypeSet kinds(a.Type(), b.Type());
  CheckOperands(kinds);
  const VariantType type = QuotientType(kinds);
  if (type == VariantType::Null) return Variant::Null();
  const double dividend = NumberOf(a);
  const double divisor = NumberOf(b);
  // 0 / 0 has no value at all, which the original calls an overflow.
  if (divisor == 0) RaiseRuntime(dividend == 0 ? number::kOverflow : number::kDivisionByZero);
  if (type == VariantType::Double) return FromFinite(dividend / divisor);
  const auto quotient = static_cast<float>(dividend / divisor);
  if (!std::isfinite(quotient)) RaiseRuntime(number::kOverflow);
  return Variant::FromSingle(quotient);
}

Variant IntegerDivide(const Variant& left, const Variant& right) {
  const Operand a(left);
  const Operand b(right);
  const SubtypeSet kinds(a.Type(), b.Type());
  CheckOperands(kinds);
  const VariantType type = RoundedType(kinds);
  if (type == VariantType::Null) return Variant::Null();
  const Rounded sides(a, b);
  const std::int64_t quotient = sides.dividend / sides.divisor;
  if (quotient > std::numeric_limits<std::int32_t>::max()) RaiseRuntime(number::kOverflow);
  return FromWhole(quotient, type);
}

Variant Modulo(const Variant& left, const Variant& right) {
  const Operand a(left);
  const Operand b(right);
  const SubtypeSet kinds(a.Type(), b.Type());
  CheckOperands(kinds);
  const VariantType type = RoundedType(kinds);
  if (type == VariantType::Null) return Variant::Null();
  const Rounded sides(a, b);
  return FromWhole(sides.dividend % sides.divisor, type);
}

Variant Power(const Variant& left, const Variant& right) {
  const Operand a(left);
  const Operand b(right);
  const SubtypeSet kinds(a.Type(), b.Type());
  CheckOperands(kinds);
  if (kinds.Has(VariantType::Null)) return Variant::Null();
  const double base = NumberOf(a);
  const double exponent = NumberOf(b);
  const bool hasNoValue = (base < 0 && exponent != std::trunc(exponent)) || (base == 0 && exponent < 0);
  if (hasNoValue) RaiseRuntime(number::kInvalidProcedureCall);
  return FromFinite(std::pow(base, exponent));
}

Variant Negate(const Variant& operand) {
  const Operand value(operand);
  switch (value.Type()) {
    case VariantType::Null: return Variant::Null();
    case VariantType::Empty:
    case VariantType::Boolean:
    case VariantType::Byte:
    case VariantType::Integer: return FromWhole(-WholeOf(value), VariantType::Integer);
    case VariantType::Long: return FromWhole(-WholeOf(value), VariantType::Long);
    case VariantType::Single: return Variant::FromSingle(-value->AsSingle());
    case VariantType::Date: return FromDateOrNumber(-value->AsDouble());
    case VariantType::Currency: {
      const std::int64_t amount = value->AsCurrency();
      const bool hasOverflow = amount == std::numeric_limits<std::int64_t>::min();
      return FromCurrency(hasOverflow, hasOverflow ? 0 : -amount);
    }
    case VariantType::Double:
    case VariantType::String: return Variant::FromDouble(-NumberOf(value));
    default: RaiseTypeMismatch(value.Value());
  }
}

Variant Plus(const Variant& operand) { return ValueOf(operand); }

}  // namespace hearthmake::vbscript
