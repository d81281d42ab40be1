#pragma once

#include "automation/Variant.hpp"
#include "vbscript/intrinsics/Arguments.hpp"

namespace hearthmake::vbscript {

// Intrinsics between texts and lists of them.
automation::Variant SplitText(Context& context, Arguments arguments);
automation::Variant JoinTexts(Context& context, Arguments arguments);
automation::Variant FilterTexts(Context& context, Arguments arguments);

// An array from 0 on with these values.
automation::Variant ArrayOf(std::span<automation::Variant> values);

}  // namespace hearthmake::vbscript
