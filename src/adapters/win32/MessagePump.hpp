#pragma once

#include "platform/EventPump.hpp"

namespace hearthmake::win32 {

// Dispatches the messages that wait for this thread: those of its windows, and the calls that other
// apartments make on its objects.
class MessagePump : public platform::EventPump {
 public:
  void DeliverPending() override;
};

}  // namespace hearthmake::win32
