#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

#include "automation/Variant.hpp"

namespace hearthmake::automation {

// Hears the events of an object by name. Arguments that are references receive what the listener puts into
// an in/out parameter.
class EventSink {
 public:
  EventSink() = default;
  EventSink(const EventSink&) = delete;
  EventSink& operator=(const EventSink&) = delete;
  virtual ~EventSink() = default;

  virtual void Raise(std::string_view event, std::span<Variant> arguments) = 0;
};

// What an Object that has events also derives from; found by dynamic_cast.
class EventSource {
 public:
  EventSource() = default;
  EventSource(const EventSource&) = delete;
  EventSource& operator=(const EventSource&) = delete;
  virtual ~EventSource() = default;

  // The sink hears every event from now on, until Unadvise with the number returned (never 0) or until the
  // source ends.
  virtual std::uint32_t Advise(std::shared_ptr<EventSink> sink) = 0;
  virtual void Unadvise(std::uint32_t connection) = 0;
};

}  // namespace hearthmake::automation
