#pragma once

#include <cstdint>

#include "vbscript/Budget.hpp"
#include "vbscript/Host.hpp"
#include "vbscript/values/OneUnitTexts.hpp"

namespace hearthmake::vbscript {

// The state of Rnd and Randomize: 24 bits, the generator of the language.
struct RandomState {
  std::uint32_t seed = 0x50000;
};

// What an intrinsic works with beside its arguments; one for each engine.
struct Context {
  Host& host;
  Budget budget;
  RandomState random;
  std::int32_t locale = 1033;  // as SetLocale sets it
  OneUnitTexts texts = {};     // for results of one unit
};

}  // namespace hearthmake::vbscript
