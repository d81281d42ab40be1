#pragma once

#include <cstdint>

#include "automation/Variant.hpp"

namespace hearthmake::vbscript {

// When two values are the same key. Numbers of every subtype (Boolean and Date among them) are by their
// value, NaN is itself; texts by their units, or without regard to case; objects by identity; Empty and Null
// are keys of their own, and so is each error code.

// A key must not be a reference. Error 5 "Invalid procedure call or argument" for an array.
std::uint32_t HashKey(const automation::Variant& key, bool ignoreCase);
bool IsSameKey(const automation::Variant& a, const automation::Variant& b, bool ignoreCase);

}  // namespace hearthmake::vbscript
