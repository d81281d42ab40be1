#pragma once

#include <sys/types.h>

#include <array>

namespace hearthmake::posix {

// A program to start as the leader of its own process group, with no signal blocked and none ignored; the
// real-time signals are left as this process has them.
struct ChildStart {
  // Leaves a standard stream to the child as this process has it.
  static constexpr int kAsOurs = -1;

  const char* path;
  char* const* arguments;  // these two end with a null pointer
  char* const* environment;
  // What becomes its standard input, output and error: descriptors above these three, or kAsOurs.
  std::array<int, 3> streams;
};

// 0 when the program could not be started; errno says why.
pid_t StartChild(const ChildStart& start);

}  // namespace hearthmake::posix
