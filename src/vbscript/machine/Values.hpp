#pragma once

#include <span>

#include "automation/Variant.hpp"

namespace hearthmake::vbscript {

// How the machine stores values: assignments, arrays, For Each. Targets are variables, not references.

// Marks of variables.
inline constexpr std::uint16_t kFixedArray = 1;
inline constexpr std::uint16_t kHoldsLock = 2;  // an Array that is a lock rather than a value

// variable = value, which is used up when it is a temporary. Of an object its default member.
void LetVariable(automation::Variant& variable, automation::Variant& value, bool isTemporary);
// Set variable = value. Error 424 for what is no object.
void SetVariable(automation::Variant& variable, const automation::Variant& value);
// A value to be kept on its own; an array that is locked is copied.
automation::Variant CopyOf(const automation::Variant& value);

// Takes the numbers of objects among indices. Before an array is looked at: it may run code that changes it.
void ResolveIndices(std::span<automation::Variant> indices);

// The array of a variable, which is its sole owner then.
automation::ArrayBuffer& OwnArray(automation::Variant& variable);
// The element; error 9 outside and for a wrong number of indices.
automation::Variant& Element(automation::ArrayBuffer& array, std::span<const automation::Variant> indices);
std::int32_t ToIndex(const automation::Variant& index);
void MakeArray(automation::Variant& variable, std::span<const automation::ArrayBuffer::Bound> bounds,
               bool isFixed);
// Errors: 10 for a fixed or locked array, 13 for what is none under Preserve, 9 for a size that is negative
// or a dimension that Preserve can't change, 7.
void ReDimArray(automation::Variant& variable, std::span<const automation::Variant> upperBounds,
                bool isPreserving);
void EraseArray(automation::Variant& variable);

// variable = variable & text, in place for the sole owner of a text.
void AppendText(automation::Variant& variable, const automation::Variant& text);

}  // namespace hearthmake::vbscript
