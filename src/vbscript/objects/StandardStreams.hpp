#pragma once

#include "vbscript/intrinsics/Context.hpp"
#include "vbscript/objects/TextStream.hpp"

namespace hearthmake::vbscript {

enum class StandardStream : std::int32_t { Input = 0, Output = 1, Error = 2 };

// One of the host's standard streams as text. Error 5 "Invalid procedure call or argument" where the host
// has none.
automation::Ref<TextStream> OpenStandardStream(Context& context, StandardStream which);

}  // namespace hearthmake::vbscript
