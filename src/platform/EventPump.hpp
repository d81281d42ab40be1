#pragma once

namespace hearthmake::platform {

// Lets the host's pending events run while the library waits for something.
class EventPump {
 public:
  EventPump() = default;
  EventPump(const EventPump&) = delete;
  EventPump& operator=(const EventPump&) = delete;
  virtual ~EventPump() = default;

  virtual void DeliverPending() = 0;
};

}  // namespace hearthmake::platform
