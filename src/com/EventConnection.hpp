#pragma once

#include "automation/Events.hpp"
#include "automation/Interface.hpp"
#include "com/Com.hpp"
#include "com/ThreadState.hpp"

namespace hearthmake::com {

// A host's sink as a listener of an object's events. What a sink does wrong stays with it: the object and the
// other sinks go on, as they do with Visual Basic's own objects.
class EventConnection final : public automation::EventSink {
 public:
  EventConnection(const automation::Interface& events, automation::Ref<IDispatch> sink)
      : m_events(events), m_sink(std::move(sink)) {}
  ~EventConnection() override;

  // Makes the connection known by its number.
  void SetKey(ThreadState::ConnectionKey key);
  const automation::Ref<IDispatch>& Sink() const { return m_sink; }

  void Raise(std::string_view event, std::span<automation::Variant> arguments) override;

 private:
  const automation::Interface& m_events;
  automation::Ref<IDispatch> m_sink;
  ThreadState::ConnectionKey m_key{nullptr, 0};
};

}  // namespace hearthmake::com
