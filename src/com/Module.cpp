#include "com/Module.hpp"

#include <atomic>

namespace hearthmake::com {

namespace {

std::atomic<long> locks = 0;

}  // namespace

void ModuleLock::Add() { ++locks; }
void ModuleLock::Remove() { --locks; }
bool ModuleLock::IsAnyHeld() { return locks != 0; }

HMODULE ThisModule() {
  HMODULE module = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                     reinterpret_cast<LPCWSTR>(&locks), &module);
  return module;
}

std::wstring ModulePath() {
  std::wstring path(MAX_PATH, L'\0');
  while (true) {
    const DWORD length = GetModuleFileNameW(ThisModule(), path.data(), static_cast<DWORD>(path.size()));
    if (length < path.size()) return path.substr(0, length);
    path.resize(path.size() * 2);
  }
}

}  // namespace hearthmake::com
