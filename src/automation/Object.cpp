#include "automation/Object.hpp"

#include <string>
#include <vector>

#include "automation/Error.hpp"
#include "automation/Interface.hpp"
#include "automation/Teardown.hpp"

namespace hearthmake::automation {

void Object::OutsideReferencesGone() noexcept {
  Object* owner = m_owner;
  if (m_holds == 0) {
    // A destructor may hand out references to this object for the time of a call; they must not end it
    // a second time.
    m_owner = nullptr;
    m_holds = 1;
    Teardown::End(this);
  }
  if (owner != nullptr) owner->Release();
}

void Object::ReleaseHold() noexcept {
  if (--m_holds == 0 && m_references == 0) {
    m_holds = 1;
    Teardown::End(this);
  }
}

void Object::SetOwner(Object* owner) noexcept {
  Object* previous = std::exchange(m_owner, owner);
  if (m_references == 0) return;
  if (owner != nullptr) owner->AddRef();
  if (previous != nullptr) previous->Release();
}

std::optional<std::int32_t> Object::FindMember(std::string_view name) const {
  return Declaration().Find(name);
}

Variant Object::Invoke(std::int32_t member, InvokeKind kind, std::span<Variant> arguments) {
  return Declaration().Invoke(*this, member, kind, arguments);
}

Ref<Enumerator> Object::Enumerate() { return nullptr; }

Variant Object::InvokeByName(std::string_view name, InvokeKind kind,
                             std::initializer_list<Variant> arguments) {
  const auto member = FindMember(name);
  if (!member) Raise(RuntimeError::MemberNotFound, Declaration().Name(), std::string(name));
  std::vector<Variant> values(arguments);
  const Ref<Object> self(this);
  return Invoke(*member, kind, values);
}

Variant Object::Get(std::string_view name, std::initializer_list<Variant> arguments) {
  return InvokeByName(name, InvokeKind::Get, arguments);
}

void Object::Let(std::string_view name, std::initializer_list<Variant> argumentsAndValue) {
  InvokeByName(name, InvokeKind::Let, argumentsAndValue);
}

void Object::Set(std::string_view name, std::initializer_list<Variant> argumentsAndValue) {
  InvokeByName(name, InvokeKind::Set, argumentsAndValue);
}

Variant Object::Call(std::string_view name, std::initializer_list<Variant> arguments) {
  return InvokeByName(name, InvokeKind::Call, arguments);
}

const Interface& Enumerator::Declaration() const {
  static const Interface declaration("Enumerator", "_Enumerator", "", "");
  return declaration;
}

}  // namespace hearthmake::automation
