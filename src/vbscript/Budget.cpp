#include "vbscript/Budget.hpp"

#include <algorithm>

namespace hearthmake::vbscript {

void Budget::StartTimeout(std::int64_t milliseconds) {
  m_isInterrupted = false;
  // Ten years are as good as no limit, and can't overflow the clock.
  constexpr std::int64_t kLongest = std::int64_t{3650} * 24 * 3600 * 1000;
  m_deadline = milliseconds < 0 ? Clock::time_point::max()
                                : Clock::now() + std::chrono::milliseconds(std::min(milliseconds, kLongest));
}

void Budget::LimitSteps(std::int64_t steps) {
  m_stepsLeft = steps;
  m_untilLook = kStepsBetweenLooks;
}

void Budget::Look() {
  const std::int64_t spent = kStepsBetweenLooks - m_untilLook;
  m_untilLook = kStepsBetweenLooks;
  m_stepsLeft -= spent;
  const bool isStopWanted = m_isInterrupted || (m_isStopWanted != nullptr && m_isStopWanted());
  if (isStopWanted || m_stepsLeft < 0 || Clock::now() >= m_deadline) {
    // Whatever runs while the stack unwinds (Class_Terminate, a handler) is stopped at its first look too.
    m_untilLook = 0;
    throw Interrupted();
  }
}

}  // namespace hearthmake::vbscript
