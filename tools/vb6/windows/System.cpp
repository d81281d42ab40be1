#include "vb6/System.hpp"

#include <windows.h>

#include <ntsecapi.h>

#include "adapters/win32/WideText.hpp"
#include "adapters/win32/Win32FileSystem.hpp"

namespace hearthmake::vb6 {
namespace {

std::string ToDos(const std::string& path) {
  std::wstring full(32'768, L'\0');
  const DWORD length =
      GetFullPathNameW(win32::ToWide(path).c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
  if (length == 0 || length >= full.size()) return path;
  full.resize(length);
  return win32::ToUtf8(full);
}

}  // namespace

Disks OpenDisks() { return {std::make_shared<win32::Win32FileSystem>(), ToDos}; }

bool FillWithRandomBytes(void* bytes, std::size_t count) {
  return RtlGenRandom(bytes, static_cast<ULONG>(count)) != 0;
}

void Crash() {
  // Without the box that asks what to do.
  SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
  RaiseException(EXCEPTION_ACCESS_VIOLATION, EXCEPTION_NONCONTINUABLE, 0, nullptr);
}

void Hang() {
  for (;;) Sleep(INFINITE);
}

}  // namespace hearthmake::vb6
