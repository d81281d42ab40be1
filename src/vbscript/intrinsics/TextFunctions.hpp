#pragma once

#include "automation/Variant.hpp"
#include "vbscript/intrinsics/Arguments.hpp"

namespace hearthmake::vbscript {

// Intrinsics that compare texts, look for one in another, and replace. By documentation a Null text gives
// Null, except in Replace (error 94).
automation::Variant CompareTexts(Context& context, Arguments arguments);  // StrComp
automation::Variant FindText(Context& context, Arguments arguments);      // InStr
automation::Variant FindBytes(Context& context, Arguments arguments);     // InStrB
automation::Variant FindLastText(Context& context, Arguments arguments);  // InStrRev
automation::Variant ReplaceText(Context& context, Arguments arguments);   // Replace

// Escape and Unescape.
automation::Variant EscapeText(Context& context, Arguments arguments);
automation::Variant UnescapeText(Context& context, Arguments arguments);

}  // namespace hearthmake::vbscript
