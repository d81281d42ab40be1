#pragma once

#include <cstdint>

#include "automation/Variant.hpp"

namespace hearthmake::vbscript {

// The operators of the language on values of any subtype: the whole rule, with the subtype of every result.
// The machine has fast paths of its own for numbers and calls these for the rest.
//
// Operands may be references (they are followed). An object stands for its default member; Nothing is
// error 91, an object without one 438, an array 13 "Type mismatch". Null gives Null except where said. Other
// errors: 6 "Overflow", 11 "Division by zero", 13 "Type mismatch", 5 "Invalid procedure call or argument".

using automation::Variant;

// Integer to Long to Double on overflow; Date keeps being a date; two texts are joined.
Variant Add(const Variant& left, const Variant& right);
Variant Subtract(const Variant& left, const Variant& right);
Variant Multiply(const Variant& left, const Variant& right);
Variant Divide(const Variant& left, const Variant& right);
// Both sides are rounded to whole numbers, halves to the even one, before they are divided.
Variant IntegerDivide(const Variant& left, const Variant& right);
Variant Modulo(const Variant& left, const Variant& right);
Variant Power(const Variant& left, const Variant& right);
Variant Negate(const Variant& operand);
Variant Plus(const Variant& operand);
// One Null counts as an empty text; two give Null.
Variant Concatenate(const Variant& left, const Variant& right);

// Bit by bit on whole numbers, by truth values on Booleans, with the three-valued logic of Null.
Variant Not(const Variant& operand);
Variant And(const Variant& left, const Variant& right);
Variant Or(const Variant& left, const Variant& right);
Variant Xor(const Variant& left, const Variant& right);
Variant Eqv(const Variant& left, const Variant& right);
Variant Imp(const Variant& left, const Variant& right);

// Which operands of a comparison stand in the source as literals (numbers, texts, dates, True and False).
// The original remembers that, and it decides how a text meets a number:
//   number literal, text variable   the text is converted to a number; error 13 when it is none
//   text literal, number variable   the number is converted to a text
//   both literals                   the text is converted to a number
//   no literal                      the number is less than the text, whatever they are
// What an operator or a function gives is no literal.
enum class Literals : std::uint8_t { None, Left, Right, Both };

// Boolean or Null. Two texts compare by their units; Empty is 0 or "". A Double beside a Single is rounded
// to a Single, a Single or Double beside a Currency to a Currency.
Variant Equal(const Variant& left, const Variant& right, Literals literals = Literals::None);
Variant NotEqual(const Variant& left, const Variant& right, Literals literals = Literals::None);
Variant Less(const Variant& left, const Variant& right, Literals literals = Literals::None);
Variant Greater(const Variant& left, const Variant& right, Literals literals = Literals::None);
Variant LessOrEqual(const Variant& left, const Variant& right, Literals literals = Literals::None);
Variant GreaterOrEqual(const Variant& left, const Variant& right, Literals literals = Literals::None);
// The same object; error 424 "Object required" when a side is none.
Variant Is(const Variant& left, const Variant& right);

// Whether a condition holds: Null does not, a number other than 0 does, texts as CBool takes them.
bool IsTrue(const Variant& condition);

// The value that an operand stands for: what a reference refers to; of an object its default member, as
// often as that is an object again.
Variant ValueOf(const Variant& operand);

}  // namespace hearthmake::vbscript
