#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "automation/Variant.hpp"

namespace hearthmake::vbscript {

// Conversions of the script engine, from a value of any subtype; they follow references and take the
// default member of an object. They differ from automation's in what scripts can see: UTF-16, dates in
// texts, "&H" texts, and the engine's own wording of errors.
// Errors: 13 "Type mismatch", 6 "Overflow", 94 "Invalid use of Null", 91 for Nothing.

std::uint8_t ToByte16(const automation::Variant& value);
std::int16_t ToInteger16(const automation::Variant& value);  // halves are rounded to the even number
std::int32_t ToLong32(const automation::Variant& value);
float ToSingle32(const automation::Variant& value);
double ToDouble64(const automation::Variant& value);
std::int64_t ToCurrency64(const automation::Variant& value);  // ten-thousandths
bool ToBoolean1(const automation::Variant& value);
double ToDate64(const automation::Variant& value);  // texts as CDate reads them

// As CStr gives it: "True", dates in the engine's locale, up to fifteen digits of a Double.
std::u16string ToText16(const automation::Variant& value);
// The same without a copy where the value is a text already: a value of subtype String.
automation::Variant ToTextVariant(const automation::Variant& value);

// What a text says as a number, as CDbl reads it: blanks around it, sign before or behind it, thousands
// separators, exponents with E or D, &H and &O, a currency sign, parentheses for negative ones. Nothing
// for what is no number.
std::optional<double> ParseNumber16(std::u16string_view text);

// The truth that a text names: True and False in any case, #TRUE# and #FALSE#. Nothing for other texts.
std::optional<bool> ParseBooleanWord(std::u16string_view text);

// A Double as CStr prints it: fifteen significant digits (seven of a Single), no trailing zeros, exponents
// as in 1E+15 and 1.5E-05.
std::u16string FormatDouble(double value);
std::u16string FormatSingle(float value);

}  // namespace hearthmake::vbscript
