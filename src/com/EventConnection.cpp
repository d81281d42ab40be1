#include "com/EventConnection.hpp"

#include <vector>

#include "com/Failure.hpp"
#include "com/VariantConversion.hpp"

namespace hearthmake::com {

namespace {

using automation::Interface;
using automation::Member;
using automation::Parameter;
using automation::ValueKind;
using automation::Variant;

const Interface* DeclaredObject(const Parameter& parameter) {
  return parameter.type.kind == ValueKind::Object && parameter.type.object != nullptr
             ? &parameter.type.object()
             : nullptr;
}

// The arguments of one event with the very types of its declaration: a handler that was compiled gets its
// variables' addresses.
class EventArguments {
 public:
  EventArguments(const Member& event, std::span<Variant> arguments)
      : m_event(event),
        m_arguments(arguments),
        m_values(event.parameters.size()),
        m_passed(event.parameters.size()) {
    for (std::size_t i = 0; i < event.parameters.size(); ++i) {
      const Parameter& parameter = event.parameters[i];
      const VARTYPE type = TypeOf(parameter.type);
      if (type != VT_VARIANT) m_values[i].vt = type;
      ToPlace(type, Place(i), arguments[i], DeclaredObject(parameter));
      VARIANT& passed = m_passed[m_passed.size() - 1 - i];
      passed = m_values[i];
      if (!parameter.isInOut) continue;
      passed = {};
      passed.vt = VT_BYREF | type;
      passed.byref = Place(i);
    }
  }

  DISPPARAMS Parameters() { return {m_passed.data(), nullptr, static_cast<UINT>(m_passed.size()), 0}; }

  void WriteBack() {
    for (std::size_t i = 0; i < m_values.size(); ++i) {
      if (!m_event.parameters[i].isInOut) continue;
      if (m_arguments[i].Type() != automation::VariantType::ByReference) continue;
      m_arguments[i].Target() = FromPlace(TypeOf(m_event.parameters[i].type), Place(i));
    }
  }

 private:
  void* Place(std::size_t index) {
    if (m_event.parameters[index].type.kind == ValueKind::Variant) return &m_values[index];
    m_values[index].vt = TypeOf(m_event.parameters[index].type);
    return &m_values[index].llVal;
  }

  const Member& m_event;
  std::span<Variant> m_arguments;
  std::vector<OwnedVariant> m_values;
  std::vector<VARIANT> m_passed;
};

}  // namespace

EventConnection::~EventConnection() {
  ThreadState* state = ThreadState::CurrentOrNull();
  if (m_key.second != 0 && state != nullptr) state->Connections().erase(m_key);
}

void EventConnection::SetKey(ThreadState::ConnectionKey key) {
  m_key = key;
  ThreadState::Current().Connections()[key] = this;
}

void EventConnection::Raise(std::string_view event, std::span<Variant> arguments) {
  const auto id = m_events.Find(event);
  if (!id) return;
  const Member& member = *m_events.Find(*id, automation::InvokeKind::Call);
  if (arguments.size() != member.parameters.size()) return;
  const automation::Ref<IDispatch> sink = m_sink;  // which the handler may disconnect
  EventArguments converted(member, arguments);
  DISPPARAMS parameters = converted.Parameters();
  EXCEPINFO failure = {};
  OwnedVariant result;
  UINT wrongArgument = 0;
  const HRESULT outcome = sink->Invoke(*id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters,
                                       &result, &failure, &wrongArgument);
  if (FAILED(outcome)) {
    FailureOf(outcome, failure);  // which frees the record
    return;
  }
  converted.WriteBack();
}

}  // namespace hearthmake::com
