#include <cmath>
#include <compare>
#include <cstdint>

#include "vbscript/Errors.hpp"
#include "vbscript/values/Conversions.hpp"
#include "vbscript/values/Dates.hpp"
#include "vbscript/values/Operand.hpp"
#include "vbscript/values/Operators.hpp"
#include "vbscript/values/SubtypeSet.hpp"

namespace hearthmake::vbscript {

using automation::VariantType;

namespace {

constexpr SubtypeSet kWhole = {VariantType::Empty, VariantType::Boolean, VariantType::Byte,
                               VariantType::Integer, VariantType::Long};

// A text where a number is asked for: a date beside a date, a truth beside a truth, else a number.
double NumberOfText(const Variant& text, VariantType beside) {
  if (beside == VariantType::Date) return ToDate64(text);
  if (beside == VariantType::Boolean) {
    if (const auto word = ParseBooleanWord(text.AsUtf16())) return *word ? -1 : 0;
  }
  return ToDouble64(text);
}

// A Currency meets a Double as a Currency, which drops what is below a ten-thousandth. A Double that no
// Currency can hold is compared as it is.
std::partial_ordering CompareCurrency(std::int64_t amount, double number) {
  constexpr double kLimit = 9.2e18;
  const double scaled = std::nearbyint(number * 10000);
  if (std::fabs(scaled) < kLimit) return amount <=> static_cast<std::int64_t>(scaled);
  return static_cast<double>(amount) <=> scaled;
}

std::partial_ordering CompareNumbers(const Variant& left, const Variant& right) {
  const SubtypeSet kinds(left.Type(), right.Type());
  if (kinds.IsOf(kWhole)) return ToLong32(left) <=> ToLong32(right);
  if (kinds.Has(VariantType::Currency) && !kinds.Has(VariantType::Date)) {
    if (!kinds.HasAny({VariantType::Single, VariantType::Double}))
      return ToCurrency64(left) <=> ToCurrency64(right);
    if (left.Type() == VariantType::Currency) return CompareCurrency(left.AsCurrency(), ToDouble64(right));
    return 0 <=> CompareCurrency(right.AsCurrency(), ToDouble64(left));
  }
  // A Double beside a Single is rounded to what a Single can tell: 1.1 equals CSng(1.1).
  if (kinds.Has(VariantType::Single) && kinds.IsOf({VariantType::Single, VariantType::Double}))
    return static_cast<float>(ToDouble64(left)) <=> static_cast<float>(ToDouble64(right));
  return ToDouble64(left) <=> ToDouble64(right);
}

std::partial_ordering CompareTexts(std::u16string_view left, std::u16string_view right) {
  return left.compare(right) <=> 0;
}

// See Literals for the rule.
std::partial_ordering CompareTextWithNumber(const Variant& text, const Variant& number, bool isTextLiteral,
                                            bool isNumberLiteral) {
  if (number.IsEmpty()) return CompareTexts(text.AsUtf16(), {});
  if (isNumberLiteral) return NumberOfText(text, number.Type()) <=> ToDouble64(number);
  if (isTextLiteral) return CompareTexts(text.AsUtf16(), ToText16(number));
  return std::partial_ordering::greater;
}

std::partial_ordering Compare(const Variant& left, const Variant& right, SubtypeSet kinds,
                              Literals literals) {
  if (!kinds.Has(VariantType::String)) return CompareNumbers(left, right);
  if (kinds.IsOf({VariantType::String})) return CompareTexts(left.AsUtf16(), right.AsUtf16());
  const bool isLeftLiteral = literals == Literals::Left || literals == Literals::Both;
  const bool isRightLiteral = literals == Literals::Right || literals == Literals::Both;
  if (left.Type() == VariantType::String)
    return CompareTextWithNumber(left, right, isLeftLiteral, isRightLiteral);
  return 0 <=> CompareTextWithNumber(right, left, isRightLiteral, isLeftLiteral);
}

template <class Holds>
Variant Relate(const Variant& left, const Variant& right, Literals literals, Holds holds) {
  const Operand a(left);
  const Operand b(right);
  const SubtypeSet kinds(a.Type(), b.Type());
  if (kinds.HasAny({VariantType::Array, VariantType::Error})) RaiseRuntime(number::kTypeMismatch);
  if (kinds.Has(VariantType::Null)) return Variant::Null();
  return Variant::FromBoolean(holds(Compare(a.Value(), b.Value(), kinds, literals)));
}

const automation::Object* ObjectOf(const Variant& operand) {
  const Variant& value = operand.Target();
  if (!value.IsObject()) RaiseRuntime(number::kObjectRequired);
  return value.AsObject();
}

}  // namespace

Variant Equal(const Variant& left, const Variant& right, Literals literals) {
  return Relate(left, right, literals, [](std::partial_ordering order) { return order == 0; });
}

Variant NotEqual(const Variant& left, const Variant& right, Literals literals) {
  return Relate(left, right, literals, [](std::partial_ordering order) { return order != 0; });
}

Variant Less(const Variant& left, const Variant& right, Literals literals) {
  return Relate(left, right, literals, [](std::partial_ordering order) { return order < 0; });
}

Variant Greater(const Variant& left, const Variant& right, Literals literals) {
  return Relate(left, right, literals, [](std::partial_ordering order) { return order > 0; });
}

Variant LessOrEqual(const Variant& left, const Variant& right, Literals literals) {
  return Relate(left, right, literals, [](std::partial_ordering order) { return order <= 0; });
}

Variant GreaterOrEqual(const Variant& left, const Variant& right, Literals literals) {
  return Relate(left, right, literals, [](std::partial_ordering order) { return order >= 0; });
}

Variant Is(const Variant& left, const Variant& right) {
  return Variant::FromBoolean(ObjectOf(left) == ObjectOf(right));
}

}  // namespace hearthmake::vbscript
