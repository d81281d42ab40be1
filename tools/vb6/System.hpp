#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>

#include "platform/FileSystem.hpp"

// What each operating system does in its own way; each has a System.cpp in a folder of its name.

namespace hearthmake::vb6 {

// The disks, and how an argument becomes an absolute DOS path.
struct Disks {
  std::shared_ptr<platform::FileSystem> files;
  std::function<std::string(const std::string& path)> toDos;
};
Disks OpenDisks();

// False where the system has no random bytes to give.
bool FillWithRandomBytes(void* bytes, std::size_t count);
// Dies as a program with a fault does.
void Crash();
[[noreturn]] void Hang();

}  // namespace hearthmake::vb6
