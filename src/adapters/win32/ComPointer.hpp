#pragma once

#include <utility>

namespace hearthmake::win32 {

// Holds a reference on a COM object.
template <class T>
class ComPointer {
 public:
  ComPointer() = default;
  ComPointer(ComPointer&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}
  ComPointer& operator=(ComPointer&& other) noexcept {
    std::swap(m_object, other.m_object);
    return *this;
  }
  ComPointer(const ComPointer&) = delete;
  ComPointer& operator=(const ComPointer&) = delete;
  ~ComPointer() {
    if (m_object != nullptr) m_object->Release();
  }

  T* Get() const { return m_object; }
  T* operator->() const { return m_object; }
  explicit operator bool() const { return m_object != nullptr; }
  // For calls that put a reference there. What was held is given back.
  T** Out() {
    if (m_object != nullptr) std::exchange(m_object, nullptr)->Release();
    return &m_object;
  }

 private:
  T* m_object = nullptr;
};

}  // namespace hearthmake::win32
