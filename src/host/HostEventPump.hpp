#pragma once

#include <functional>
#include <memory>

#include "adapters/posix/PosixProcessLauncher.hpp"
#include "platform/EventPump.hpp"

namespace hearthmake::host {

// What the command does while the library waits for a child: ends the child when the user wants the run
// to end, and lets the display move on.
class HostEventPump final : public platform::EventPump {
 public:
  explicit HostEventPump(std::shared_ptr<posix::PosixProcessLauncher> launcher)
      : m_launcher(std::move(launcher)) {}

  void OnTick(std::function<void()> tick) { m_tick = std::move(tick); }
  void DeliverPending() override;

 private:
  std::shared_ptr<posix::PosixProcessLauncher> m_launcher;
  std::function<void()> m_tick;
};

}  // namespace hearthmake::host
