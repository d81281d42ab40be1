#include "vbscript/objects/DictionaryKey.hpp"

#include <bit>
#include <cmath>
#include <cstring>
#include <optional>

#include "vbscript/Errors.hpp"
#include "vbscript/values/Text16.hpp"
#include "vbscript/values/WideProduct.hpp"

namespace hearthmake::vbscript {

using automation::Variant;
using automation::VariantType;

namespace {

constexpr std::uint64_t kFirstFactor = 0x9E3779B97F4A7C15;
constexpr std::uint64_t kSecondFactor = 0xD6E8FEB86659FD93;
constexpr std::size_t kUnitsPerWord = sizeof(std::uint64_t) / sizeof(char16_t);

// One multiplication to twice the width, folded: every bit of the input reaches the low bits of the result.
std::uint64_t Mix(std::uint64_t a, std::uint64_t b) {
  const WideProduct product = MultiplyWide(a, b);
  return product.low ^ product.high;
}

std::uint32_t Finish(std::uint64_t hash) { return static_cast<std::uint32_t>(hash ^ (hash >> 32)); }

std::uint64_t Word(const char16_t* units) {
  std::uint64_t word = 0;
  std::memcpy(&word, units, sizeof word);
  return word;
}

std::uint32_t HashText(std::u16string_view text) {
  const char16_t* units = text.data();
  const std::size_t size = text.size();
  std::uint64_t hash = kFirstFactor ^ size;
  if (size >= kUnitsPerWord) {
    for (std::size_t i = 0; i + kUnitsPerWord < size; i += kUnitsPerWord)
      hash = Mix(hash ^ Word(units + i), kSecondFactor);
    hash = Mix(hash ^ Word(units + size - kUnitsPerWord), kSecondFactor);  // overlaps the one before
  } else if (size != 0) {
    const auto unit = [&](std::size_t at) { return std::uint64_t{units[at]}; };
    hash = Mix(hash ^ (unit(0) | unit(size / 2) << 16 | unit(size - 1) << 32), kSecondFactor);
  }
  return Finish(hash);
}

bool IsSameText(std::u16string_view a, std::u16string_view b) {
  return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(char16_t)) == 0;
}

std::uint32_t HashFoldedText(std::u16string_view text) {
  std::uint64_t hash = kFirstFactor ^ text.size();
  for (const char16_t unit : text) hash = (hash ^ LowerUnit(unit)) * kSecondFactor;
  return Finish(Mix(hash, kFirstFactor));
}

constexpr double kCurrencyUnit = 10000.0;

// Those that a variant keeps in 32 bits.
bool IsWhole(const Variant& key) {
  return key.Type() == VariantType::Long || key.Type() == VariantType::Integer;
}

std::optional<double> NumberOf(const Variant& key) {
  switch (key.Type()) {
    case VariantType::Byte: return key.AsByte();
    case VariantType::Integer:
    case VariantType::Boolean: return key.AsInteger();
    case VariantType::Long: return key.AsLong();
    case VariantType::Single: return key.AsSingle();
    case VariantType::Double:
    case VariantType::Date: return key.AsDouble();
    case VariantType::Currency: return static_cast<double>(key.AsCurrency()) / kCurrencyUnit;
    default: return std::nullopt;
  }
}

std::uint64_t BitsOf(double number) {
  if (number == 0) return 0;             // of either sign
  if (std::isnan(number)) return ~0ULL;  // whatever it carries
  return std::bit_cast<std::uint64_t>(number);
}

}  // namespace

std::uint32_t HashKey(const Variant& key, bool ignoreCase) {
  switch (key.Type()) {
    case VariantType::String: return ignoreCase ? HashFoldedText(key.AsUtf16()) : HashText(key.AsUtf16());
    case VariantType::Object: return Finish(Mix(std::bit_cast<std::uintptr_t>(key.AsObject()), kFirstFactor));
    case VariantType::Error: return Finish(Mix(static_cast<std::uint32_t>(key.AsErrorCode()), kSecondFactor));
    case VariantType::Empty: return 0;
    case VariantType::Null: return 1;
    case VariantType::Array:
    case VariantType::ByReference: RaiseRuntime(number::kInvalidProcedureCall);
    default: return Finish(Mix(BitsOf(*NumberOf(key)), kFirstFactor));
  }
}

bool IsSameKey(const Variant& a, const Variant& b, bool ignoreCase) {
  if (IsWhole(a) && IsWhole(b)) return a.AsLong() == b.AsLong();
  if (a.Type() == VariantType::String) {
    if (b.Type() != VariantType::String) return false;
    if (a.AsStringBuffer() == b.AsStringBuffer()) return true;
    return ignoreCase ? EqualsIgnoreCase(a.AsUtf16(), b.AsUtf16()) : IsSameText(a.AsUtf16(), b.AsUtf16());
  }
  // As doubles all these are exact but large amounts of money.
  if (a.Type() == VariantType::Currency && b.Type() == VariantType::Currency)
    return a.AsCurrency() == b.AsCurrency();
  const auto number = NumberOf(a);
  if (number) {
    const auto other = NumberOf(b);
    return other && BitsOf(*number) == BitsOf(*other);
  }
  if (a.Type() != b.Type()) return false;
  if (a.IsObject()) return a.AsObject() == b.AsObject();
  return a.Type() != VariantType::Error || a.AsErrorCode() == b.AsErrorCode();
}

}  // namespace hearthmake::vbscript
