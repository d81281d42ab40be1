#include "com/ThreadState.hpp"

#include "automation/Error.hpp"
#include "com/ComObject.hpp"
#include "com/EnumVariant.hpp"
#include "com/HostObject.hpp"

namespace hearthmake::com {

namespace {

using automation::Object;
using automation::Ref;
using automation::RuntimeError;

// A plain pointer: nothing of ours may run when a thread ends.
thread_local ThreadState* t_state = nullptr;

}  // namespace

ThreadState::ThreadState(Composer composer) : m_composer(composer) {
  if (composer != nullptr) m_apartment.emplace(composer());
}

ThreadState& ThreadState::Current() {
  if (t_state == nullptr) automation::Raise(RuntimeError::ObjectNotSet, "");
  return *t_state;
}

ThreadState* ThreadState::CurrentOrNull() { return t_state; }

ThreadState::Call::Call(Composer composer) {
  if (t_state == nullptr && composer != nullptr) t_state = new ThreadState(composer);
  m_state = t_state;
  if (m_state != nullptr) ++m_state->m_calls;
}

ThreadState::Call::~Call() {
  if (m_state == nullptr) return;
  --m_state->m_calls;
  EndIfIdle();
}

ThreadState::Attachment::Attachment() {
  if (t_state == nullptr) t_state = new ThreadState(nullptr);
  ++t_state->m_calls;
}

ThreadState::Attachment::~Attachment() {
  --t_state->m_calls;
  EndIfIdle();
}

void ThreadState::EndIfIdle() {
  ThreadState* state = t_state;
  if (state->m_calls != 0 || state->IsHeld()) return;
  // What ends now may call the host, and be called: it must find the state and leave it alone.
  ++state->m_calls;
  state->m_apartment.reset();
  --state->m_calls;
  if (state->IsHeld()) {
    if (state->m_composer != nullptr) state->m_apartment.emplace(state->m_composer());
    return;
  }
  t_state = nullptr;
  delete state;
}

IUnknown* ThreadState::Give(Object* object, const automation::Interface* declared) {
  if (object == nullptr) return nullptr;
  if (auto* host = dynamic_cast<HostObject*>(object)) return host->Give();
  if (auto* enumerator = dynamic_cast<automation::Enumerator*>(object)) {
    return new EnumVariant(Ref<automation::Enumerator>(enumerator));
  }
  const auto known = m_objects.find(object);
  ComObject* face = known != m_objects.end() ? known->second : nullptr;
  if (face == nullptr) {
    face = new ComObject(*this, *object);
    m_objects[object] = face;
  } else {
    face->AddRef();
  }
  if (declared == nullptr || declared == &object->Declaration()) return face->Identity();
  void* wanted = nullptr;
  const HRESULT found = face->QueryInterface(ParseGuid(declared->InterfaceId()), &wanted);
  face->Release();
  if (FAILED(found)) automation::Raise(RuntimeError::TypeMismatch, "");
  return static_cast<IUnknown*>(wanted);
}

Ref<Object> ThreadState::Take(IUnknown* pointer) {
  if (pointer == nullptr) return nullptr;
  if (auto own = ComObject::Behind(pointer, *this)) return own;
  IUnknown* found = nullptr;
  if (FAILED(pointer->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(&found)))) found = pointer;
  const auto identity = found == pointer ? Ref<IUnknown>(pointer) : Ref<IUnknown>::Adopt(found);
  if (found == pointer) found->Release();
  HostObject*& known = m_hostObjects[identity.Get()];
  if (known == nullptr || !known->IsAlive()) {
    auto made = automation::Make<HostObject>(identity);
    known = made.Get();
    return made;
  }
  return Ref<Object>(known);
}

void ThreadState::Forget(IUnknown* identity, const HostObject& object) {
  const auto known = m_hostObjects.find(identity);
  if (known != m_hostObjects.end() && known->second == &object) m_hostObjects.erase(known);
}

}  // namespace hearthmake::com
