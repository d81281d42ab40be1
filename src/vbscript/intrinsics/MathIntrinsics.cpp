#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

#include "vbscript/Errors.hpp"
#include "vbscript/intrinsics/Intrinsics.hpp"
#include "vbscript/values/Conversions.hpp"
#include "vbscript/values/Operand.hpp"

namespace hearthmake::vbscript {

using automation::Variant;
using automation::VariantType;

namespace {

using Arguments = std::span<Variant>;

constexpr std::uint32_t kSeedMask = 0xFFFFFF;
constexpr std::uint32_t kMultiplier = 0xFD43FD;
constexpr std::uint32_t kIncrement = 0xC39EC3;
constexpr float kSeedUnit = 1.0F / 16777216;
constexpr std::int32_t kMostDigits = 22;
constexpr double kSecondsADay = 86400;

Variant FromFinite(double value) {
  if (!std::isfinite(value)) RaiseRuntime(number::kOverflow);
  return Variant::FromDouble(value);
}

// A whole number that left the range of its subtype goes to the next one.
Variant FromWhole(std::int64_t value, VariantType narrowest) {
  if (narrowest != VariantType::Long && value == static_cast<std::int16_t>(value))
    return Variant::FromInteger(static_cast<std::int16_t>(value));
  if (value == static_cast<std::int32_t>(value)) return Variant::FromLong(static_cast<std::int32_t>(value));
  return Variant::FromDouble(static_cast<double>(value));
}

Variant Abs(Context&, Arguments arguments) {
  const Operand value(arguments[0]);
  switch (value.Type()) {
    case VariantType::Null:
    case VariantType::Byte: return value.Value();
    case VariantType::Empty: return Variant::FromInteger(0);
    case VariantType::Boolean:
    case VariantType::Integer:
      return FromWhole(std::abs(std::int64_t{value->AsInteger()}), VariantType::Integer);
    case VariantType::Long: return FromWhole(std::abs(std::int64_t{value->AsLong()}), VariantType::Long);
    case VariantType::Single: return Variant::FromSingle(std::fabs(value->AsSingle()));
    case VariantType::Date: return Variant::FromDate(std::fabs(value->AsDouble()));
    case VariantType::Currency:
      if (value->AsCurrency() == std::numeric_limits<std::int64_t>::min()) RaiseRuntime(number::kOverflow);
      return Variant::FromCurrency(std::abs(value->AsCurrency()));
    default: return Variant::FromDouble(std::fabs(ToDouble64(value.Value())));
  }
}

// Int and Fix, which keep the subtype; a text becomes a Double.
Variant ToWhole(const Variant& argument, double (*round)(double)) {
  const Operand value(argument);
  switch (value.Type()) {
    case VariantType::Null:
    case VariantType::Byte:
    case VariantType::Integer:
    case VariantType::Long: return value.Value();
    case VariantType::Empty: return Variant::FromInteger(0);
    case VariantType::Boolean: return Variant::FromInteger(value->AsInteger());
    case VariantType::Single:
      return Variant::FromSingle(static_cast<float>(round(static_cast<double>(value->AsSingle()))));
    case VariantType::Date: return Variant::FromDate(round(value->AsDouble()));
    case VariantType::Currency: {
      const std::int64_t amount = value->AsCurrency();
      std::int64_t whole = amount / 10000;
      if (amount % 10000 < 0 && round(-0.5) < 0) --whole;
      if (whole < std::numeric_limits<std::int64_t>::min() / 10000) RaiseRuntime(number::kOverflow);
      return Variant::FromCurrency(whole * 10000);
    }
    default: return Variant::FromDouble(round(ToDouble64(value.Value())));
  }
}

Variant Int(Context&, Arguments arguments) { return ToWhole(arguments[0], std::floor); }
Variant Fix(Context&, Arguments arguments) { return ToWhole(arguments[0], std::trunc); }

Variant Sgn(Context&, Arguments arguments) {
  const double value = ToDouble64(arguments[0]);
  return Variant::FromInteger(static_cast<std::int16_t>(value > 0 ? 1 : value < 0 ? -1 : 0));
}

template <double (*kFunction)(double)>
Variant OfNumber(Context&, Arguments arguments) {
  return FromFinite(kFunction(ToDouble64(arguments[0])));
}

double SquareRoot(double value) {
  if (value < 0) RaiseRuntime(number::kInvalidProcedureCall);
  return std::sqrt(value);
}

double Logarithm(double value) {
  if (value <= 0) RaiseRuntime(number::kInvalidProcedureCall);
  return std::log(value);
}

double RoundAt(double value, std::int32_t digits) {
  const double power = std::pow(10.0, digits);
  const double scaled = value * power;
  // Beyond 2^52 there is no fraction left to round.
  if (!(std::fabs(scaled) < 4503599627370496.0)) return value;
  return std::nearbyint(scaled) / power;
}

std::int64_t RoundCurrencyAt(std::int64_t amount, std::int32_t digits) {
  std::int64_t unit = 1;
  for (std::int32_t i = digits; i < 4; ++i) unit *= 10;
  if (unit == 1) return amount;
  std::int64_t count = amount / unit;
  const std::int64_t twice = amount % unit * 2;
  const bool isOdd = count % 2 != 0;
  if (twice > unit || (twice == unit && isOdd)) ++count;
  if (twice < -unit || (twice == -unit && isOdd)) --count;
  std::int64_t result = 0;
  if (__builtin_mul_overflow(count, unit, &result)) RaiseRuntime(number::kOverflow);
  return result;
}

// Halves go to the even digit.
Variant Round(Context&, Arguments arguments) {
  const Operand value(arguments[0]);
  const bool hasDigits = arguments.size() > 1 && !arguments[1].IsMissing();
  const std::int32_t digits = hasDigits ? ToLong32(arguments[1]) : 0;
  if (digits < 0 || digits > kMostDigits) RaiseRuntime(number::kInvalidProcedureCall);
  switch (value.Type()) {
    case VariantType::Null:
    case VariantType::Byte:
    case VariantType::Integer:
    case VariantType::Long: return value.Value();
    case VariantType::Empty: return Variant::FromInteger(0);
    case VariantType::Boolean: return Variant::FromInteger(value->AsInteger());
    case VariantType::Single:
      return Variant::FromSingle(static_cast<float>(RoundAt(static_cast<double>(value->AsSingle()), digits)));
    case VariantType::Date: return Variant::FromDate(RoundAt(value->AsDouble(), digits));
    case VariantType::Currency: return Variant::FromCurrency(RoundCurrencyAt(value->AsCurrency(), digits));
    default: return Variant::FromDouble(RoundAt(ToDouble64(value.Value()), digits));
  }
}

Variant RandomValue(const RandomState& state) {
  return Variant::FromSingle(static_cast<float>(state.seed) * kSeedUnit);
}

// The next number; the last one for 0. A negative argument is a seed of its own: the bits of the Single,
// its top byte added at the bottom.
Variant Rnd(Context& context, Arguments arguments) {
  RandomState& state = context.random;
  const bool hasArgument = !arguments.empty() && !arguments[0].IsMissing();
  const float argument = hasArgument ? ToSingle32(arguments[0]) : 1;
  if (argument == 0) return RandomValue(state);
  if (argument < 0) {
    const auto bits = std::bit_cast<std::uint32_t>(argument);
    state.seed = (bits + (bits >> 24)) & kSeedMask;
  }
  state.seed = (state.seed * kMultiplier + kIncrement) & kSeedMask;
  return RandomValue(state);
}

double SecondsSinceMidnight(double oleDate) {
  return std::fabs(oleDate - std::trunc(oleDate)) * kSecondsADay;
}

// The middle of the three bytes of the seed and the upper one come from the upper half of a Double, both
// words of it folded; the lowest byte stays. Without an argument that half is the bits of the time of day
// as a Single.
Variant Randomize(Context& context, Arguments arguments) {
  std::uint32_t bits = 0;
  if (!arguments.empty() && !arguments[0].IsMissing()) {
    bits = static_cast<std::uint32_t>(std::bit_cast<std::uint64_t>(ToDouble64(arguments[0])) >> 32);
  } else {
    const auto seconds = SecondsSinceMidnight(context.host.Platform().clock->Now());
    bits = std::bit_cast<std::uint32_t>(static_cast<float>(seconds));
  }
  const std::uint32_t folded = (bits ^ (bits >> 16)) & 0xFFFF;
  context.random.seed = (context.random.seed & 0xFF) | folded << 8;
  return Variant();
}

// Parts above 255 count as 255.
std::int32_t ColorPart(const Variant& argument) {
  const std::int32_t part = ToInteger16(argument);
  if (part < 0) RaiseRuntime(number::kInvalidProcedureCall);
  return std::min(part, 255);
}

Variant Rgb(Context&, Arguments arguments) {
  const std::int32_t red = ColorPart(arguments[0]);
  const std::int32_t green = ColorPart(arguments[1]);
  const std::int32_t blue = ColorPart(arguments[2]);
  return Variant::FromLong(red | green << 8 | blue << 16);
}

}  // namespace

std::span<const Intrinsic> MathIntrinsics() {
  static constexpr Intrinsic kIntrinsics[] = {
      {"Abs", 1, 1, Abs},
      {"Atn", 1, 1, OfNumber<std::atan>},
      {"Cos", 1, 1, OfNumber<std::cos>},
      {"Exp", 1, 1, OfNumber<std::exp>},
      {"Fix", 1, 1, Fix},
      {"Int", 1, 1, Int},
      {"Log", 1, 1, OfNumber<Logarithm>},
      {"Randomize", 0, 1, Randomize},
      {"RGB", 3, 3, Rgb},
      {"Rnd", 0, 1, Rnd},
      {"Round", 1, 2, Round},
      {"Sgn", 1, 1, Sgn},
      {"Sin", 1, 1, OfNumber<std::sin>},
      {"Sqr", 1, 1, OfNumber<SquareRoot>},
      {"Tan", 1, 1, OfNumber<std::tan>},
  };
  return kIntrinsics;
}

}  // namespace hearthmake::vbscript
