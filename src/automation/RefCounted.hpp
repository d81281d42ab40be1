#pragma once

#include <cstdint>
#include <utility>

namespace hearthmake::automation {

// A pointer to a thing that counts its references itself (AddRef, Release). Eight bytes, so that a
// script value can hold one; the thing goes at the moment its last reference goes.
template <class T>
class Ref {
 public:
  Ref() = default;
  Ref(std::nullptr_t) {}  // NOLINT(google-explicit-constructor): Nothing is a reference too
  explicit Ref(T* object) : m_object(object) {
    if (m_object != nullptr) m_object->AddRef();
  }
  Ref(const Ref& other) : Ref(other.m_object) {}
  Ref(Ref&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}
  template <class U>
  Ref(const Ref<U>& other) : Ref(other.Get()) {}  // NOLINT(google-explicit-constructor): up-cast
  ~Ref() {
    if (m_object != nullptr) m_object->Release();
  }
  Ref& operator=(Ref other) noexcept {
    std::swap(m_object, other.m_object);
    return *this;
  }

  T* Get() const { return m_object; }
  T* operator->() const { return m_object; }
  T& operator*() const { return *m_object; }
  explicit operator bool() const { return m_object != nullptr; }
  friend bool operator==(const Ref& a, const Ref& b) { return a.m_object == b.m_object; }

  // Takes over a reference that has been counted already, and gives one up without counting it down.
  static Ref Adopt(T* object) {
    Ref result;
    result.m_object = object;
    return result;
  }
  T* Detach() { return std::exchange(m_object, nullptr); }

 private:
  T* m_object = nullptr;
};

}  // namespace hearthmake::automation
