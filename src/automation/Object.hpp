#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string_view>

#include "automation/RefCounted.hpp"
#include "automation/Variant.hpp"

namespace hearthmake::automation {

class Enumerator;
class Interface;

// How a member is reached by name. A call may be a method or a property read: scripts don't say which.
enum class InvokeKind : std::uint8_t { Call = 1, Get = 2, Let = 4, Set = 8 };

// The base of everything that a host or a script can hold.
//
// Life: an object lives in one apartment and counts two kinds of references without locking. *Outside*
// references (Ref) are those of hosts, scripts and calls. *Holds* (Held) are those of the object's owner
// and of other members of the same graph. A member that somebody outside holds keeps its owner alive:
// the first outside reference takes one on the owner, the last gives it back. A graph that nobody
// outside holds is therefore freed as a whole, and an owner must disown its members (SetOwner(nullptr))
// before it goes or when it takes one out; a member without owner stands alone.
class Object {
 public:
  Object() = default;
  Object(const Object&) = delete;
  Object& operator=(const Object&) = delete;

  void AddRef() noexcept {
    if (m_references++ == 0 && m_owner != nullptr) m_owner->AddRef();
  }
  void Release() noexcept {
    if (--m_references == 0) OutsideReferencesGone();
  }
  void AddHold() noexcept { ++m_holds; }
  void ReleaseHold() noexcept;

  Object* Owner() const { return m_owner; }
  void SetOwner(Object* owner) noexcept;

  // The public interface of the object's class.
  virtual const Interface& Declaration() const = 0;

  // The id of a member, found by name without regard to case.
  virtual std::optional<std::int32_t> FindMember(std::string_view name) const;
  // Calls a member. Arguments stand in the order of the parameters; for Let and Set the new value is the
  // last. An argument that refers to another variant (Variant::ByReference) receives what the member
  // puts into an in/out parameter. Arguments that the member has no parameters for go to the default
  // member of its result. Errors: 438 for a kind that the member does not offer, 450 and 449 for too
  // many and too few arguments, 13 for one that can't be converted, and the member's own.
  virtual Variant Invoke(std::int32_t member, InvokeKind kind, std::span<Variant> arguments);
  // A walk over the items of a collection; null for what is none.
  virtual Ref<Enumerator> Enumerate();

  // Late-bound access by name. Error 438 names a member that does not exist.
  Variant Get(std::string_view name, std::initializer_list<Variant> arguments = {});
  void Let(std::string_view name, std::initializer_list<Variant> argumentsAndValue);
  void Set(std::string_view name, std::initializer_list<Variant> argumentsAndValue);
  Variant Call(std::string_view name, std::initializer_list<Variant> arguments = {});

 protected:
  virtual ~Object() = default;

  // The last reference and hold have gone. Deletes the object; a class whose objects want to do something
  // while they are still whole does that first. The object counts as held meanwhile, so that references
  // may come and go; one that was stored elsewhere makes IsReferenced true: such an object must not be
  // deleted but LiveOn.
  virtual void LastReferenceGone() noexcept { delete this; }
  bool IsReferenced() const { return m_references != 0; }
  // Gives back a reference that was taken in LastReferenceGone, without another end.
  void DropReference() noexcept { --m_references; }
  void LiveOn() noexcept { m_holds = 0; }

 private:
  friend class Teardown;
  void OutsideReferencesGone() noexcept;

  Variant InvokeByName(std::string_view name, InvokeKind kind, std::initializer_list<Variant> arguments);

  Object* m_owner = nullptr;
  std::int32_t m_references = 0;
  std::int32_t m_holds = 0;
};

// The items of a collection, one after the other.
class Enumerator : public Object {
 public:
  // Gives the next item; false when there is none left.
  virtual bool Next(Variant& item) = 0;
  const Interface& Declaration() const override;
};

// A hold on an object of the same graph: keeps it alive without keeping its owner alive.
template <class T>
class Held {
 public:
  Held() = default;
  explicit Held(T* object) : m_object(object) {
    if (m_object != nullptr) m_object->AddHold();
  }
  explicit Held(const Ref<T>& object) : Held(object.Get()) {}
  Held(const Held& other) : Held(other.m_object) {}
  Held(Held&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}
  ~Held() {
    if (m_object != nullptr) m_object->ReleaseHold();
  }
  Held& operator=(Held other) noexcept {
    std::swap(m_object, other.m_object);
    return *this;
  }

  T* Get() const { return m_object; }
  T* operator->() const { return m_object; }
  T& operator*() const { return *m_object; }
  explicit operator bool() const { return m_object != nullptr; }

 private:
  T* m_object = nullptr;
};

// Makes an object with one outside reference.
template <class T, class... Arguments>
Ref<T> Make(Arguments&&... arguments) {
  return Ref<T>(new T(std::forward<Arguments>(arguments)...));
}

}  // namespace hearthmake::automation
