#pragma once

#include <functional>
#include <utility>

#include "platform/EventPump.hpp"

namespace hearthmake::host {

// What the command does while the library waits for a child: ends the children when the user wants the run
// to end, and lets the display move on.
class HostEventPump final : public platform::EventPump {
 public:
  explicit HostEventPump(std::function<void()> terminateChildren)
      : m_terminateChildren(std::move(terminateChildren)) {}

  void OnTick(std::function<void()> tick) { m_tick = std::move(tick); }
  void DeliverPending() override;

 private:
  std::function<void()> m_terminateChildren;
  std::function<void()> m_tick;
};

}  // namespace hearthmake::host
