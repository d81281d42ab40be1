#pragma once

#include <string>

#include "com/Com.hpp"

namespace hearthmake::com {

// What keeps the library in the process: each object that a host holds, each thread that has an apartment,
// and each lock that a host took on a class factory.
class ModuleLock {
 public:
  ModuleLock() { Add(); }
  ModuleLock(const ModuleLock&) = delete;
  ModuleLock& operator=(const ModuleLock&) = delete;
  ~ModuleLock() { Remove(); }

  static void Add();
  static void Remove();
  static bool IsAnyHeld();
};

// The module that this code is part of, and its file.
HMODULE ThisModule();
std::wstring ModulePath();

}  // namespace hearthmake::com
