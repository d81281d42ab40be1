#pragma once

#include <chrono>
#include <cstdint>
#include <limits>

namespace hearthmake::vbscript {

// Thrown through the machine when a script has used up its time or its instructions. Not an
// automation::Error on purpose: no On Error Resume Next may catch it.
class Interrupted {};

// What a script may still spend. Everything that can take long charges its steps here: the machine at
// backward jumps and calls, an intrinsic for the units that it walks. Looking at the clock costs more than
// a step, so it is looked at once in kStepsBetweenLooks.
class Budget {
 public:
  static constexpr std::int64_t kStepsBetweenLooks = 20'000;
  static constexpr std::int64_t kNoLimit = -1;

  // Milliseconds from now on; kNoLimit for none.
  void StartTimeout(std::int64_t milliseconds);
  // For fuzzing and tests: steps in all from now on, to the nearest look.
  void LimitSteps(std::int64_t steps);
  // May be called from a signal handler or another thread: the script ends at its next look.
  void Interrupt() { m_isInterrupted = true; }

  // Asked at each look: true ends the script as Interrupt does. Null for none.
  void SetStopCheck(bool (*isStopWanted)()) { m_isStopWanted = isStopWanted; }

  // Throws Interrupted when the budget is used up. One step is about one cheap instruction, or some
  // sixteen units of text.
  void Charge(std::int64_t steps) {
    if ((m_untilLook -= steps) < 0) [[unlikely]]
      Look();
  }

 private:
  void Look();

  using Clock = std::chrono::steady_clock;
  std::int64_t m_untilLook = kStepsBetweenLooks;
  std::int64_t m_stepsLeft = std::numeric_limits<std::int64_t>::max();
  Clock::time_point m_deadline = Clock::time_point::max();
  volatile bool m_isInterrupted = false;
  bool (*m_isStopWanted)() = nullptr;
};

}  // namespace hearthmake::vbscript
