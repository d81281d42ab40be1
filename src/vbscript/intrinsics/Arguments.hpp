#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "automation/Variant.hpp"
#include "vbscript/intrinsics/Context.hpp"

namespace hearthmake::vbscript {

// What the intrinsics share to read their arguments. Arguments are converted in place: the span is the
// call's own copy. Errors are those of values/Conversions.hpp (13, 6, 94 for Null).

using Arguments = std::span<automation::Variant>;

// Whether an argument was given at all.
inline bool IsGiven(Arguments arguments, std::size_t place) {
  return place < arguments.size() && !arguments[place].IsMissing();
}

// Puts the default member of an object in its place, and what a reference refers to.
automation::Variant& Resolve(automation::Variant& argument);

inline bool IsNullArgument(automation::Variant& argument) {
  if (argument.Type() == automation::VariantType::String) return false;
  return Resolve(argument).IsNull();
}

automation::Variant& ConvertToText(automation::Variant& argument);
// The argument as a text: a value of subtype String; Null is error 94.
inline automation::Variant& AsText(automation::Variant& argument) {
  return argument.Type() == automation::VariantType::String ? argument : ConvertToText(argument);
}

std::int32_t ConvertToLong(const automation::Variant& argument);
inline std::int32_t AsLong(const automation::Variant& argument) {
  const bool isWhole =
      argument.Type() == automation::VariantType::Long || argument.Type() == automation::VariantType::Integer;
  return isWhole ? argument.AsLong() : ConvertToLong(argument);
}

// Arguments that may be left out, with what counts then.
std::int32_t LongOr(Arguments arguments, std::size_t place, std::int32_t otherwise);
bool BooleanOr(Arguments arguments, std::size_t place, bool otherwise);

// vbBinaryCompare or vbTextCompare; any other mode is error 5.
bool IsTextCompare(Arguments arguments, std::size_t place);

// Raises error 5.
[[noreturn]] void RaiseInvalidCall();

// Charges the work of walking over so many units of text.
inline void ChargeUnits(Context& context, std::size_t units) {
  context.budget.Charge(static_cast<std::int64_t>(units / 16));
}

// The longest text: 2^30 units.
inline constexpr std::size_t kLongestText = std::size_t{1} << 30;

// A new text whose characters the caller sets at once (Characters), its work charged. Error 14 for one that
// is too long.
automation::Variant NewText(Context& context, std::size_t length);
inline char16_t* Characters(automation::Variant& newText) { return newText.AsStringBuffer()->Writable(); }

// A part of a text that a value holds: the value itself when the part is all of it.
automation::Variant PartOf(Context& context, const automation::Variant& text, std::size_t start,
                           std::size_t length);

}  // namespace hearthmake::vbscript
