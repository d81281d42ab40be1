#pragma once

#include <windows.h>

#include <utility>

namespace hearthmake::win32 {

// Owns a handle of the kernel. Either value that the system gives for "none" counts as none.
class Handle {
 public:
  Handle() = default;
  explicit Handle(HANDLE handle) : m_handle(handle == INVALID_HANDLE_VALUE ? nullptr : handle) {}
  Handle(Handle&& other) noexcept : m_handle(std::exchange(other.m_handle, nullptr)) {}
  Handle& operator=(Handle&& other) noexcept {
    std::swap(m_handle, other.m_handle);
    return *this;
  }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;
  ~Handle() { Reset(); }

  HANDLE Get() const { return m_handle; }
  explicit operator bool() const { return m_handle != nullptr; }
  void Reset() {
    if (m_handle != nullptr) CloseHandle(m_handle);
    m_handle = nullptr;
  }

 private:
  HANDLE m_handle = nullptr;
};

}  // namespace hearthmake::win32
