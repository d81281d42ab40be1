#pragma once

#include <span>
#include <string_view>

#include "automation/Variant.hpp"
#include "vbscript/intrinsics/Intrinsics.hpp"

namespace hearthmake::vbscript {

// Calls an intrinsic and puts its name, as the caller spelled it, behind the text of an error that the
// function raises itself: "Type mismatch: 'UBound'". The intrinsics and the conversions under them leave
// the name out, so that it is put there in this one place. Checks the number of arguments (error 450).
automation::Variant CallIntrinsic(const Intrinsic& intrinsic, std::string_view spelling, Context& context,
                                  std::span<automation::Variant> arguments);

// The intrinsic of a name in any case, from a list; null when there is none.
const Intrinsic* FindIntrinsic(std::span<const Intrinsic> intrinsics, std::string_view name);

}  // namespace hearthmake::vbscript
