#pragma once

#include <chrono>

#include "vbscript/Budget.hpp"

namespace hearthmake::vbscript {

// How long an object waits for anything before it looks whether the script may go on waiting.
inline constexpr std::chrono::milliseconds kWaitSlice{50};

// Looks at the script's time now; throws Interrupted when it is over.
inline void LookAtTime(Budget& budget) { budget.Charge(Budget::kStepsBetweenLooks + 1); }

}  // namespace hearthmake::vbscript
