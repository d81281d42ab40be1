// Starts and waits for a program that ends at once, by the launcher and by a bare loop of posix_spawn
// and waitpid, in turns, and prints the ratio of the two.
//
//   SpawnBench PROGRAM [ROUNDS] [MEGABYTES]
//
// PROGRAM is a small static executable, by its absolute path. MEGABYTES is the memory that this
// process holds meanwhile, as a host with many projects does.

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "adapters/posix/PosixProcessLauncher.hpp"

using Clock = std::chrono::steady_clock;

namespace {

constexpr int kStarts = 500;

double Bare(const char* program) {
  const char* const arguments[] = {program, "/make", "C:\\src\\Lib\\Lib.vbp", "/out", "C:\\src\\Lib\\Lib.log",
                                   nullptr};
  const auto start = Clock::now();
  for (int i = 0; i < kStarts; ++i) {
    pid_t child = 0;
    if (posix_spawn(&child, program, nullptr, nullptr, const_cast<char* const*>(arguments), environ) != 0)
      std::abort();
    waitpid(child, nullptr, 0);
  }
  return std::chrono::duration<double>(Clock::now() - start).count();
}

double Launched(hearthmake::posix::PosixProcessLauncher& launcher, const std::string& program) {
  const std::string line =
      "\"" + program + "\" /make \"C:\\src\\Lib\\Lib.vbp\" /out \"C:\\src\\Lib\\Lib.log\"";
  const auto start = Clock::now();
  for (int i = 0; i < kStarts; ++i) {
    const auto child = launcher.Start(line);
    if (child == nullptr) std::abort();
    while (!child->Wait(std::chrono::milliseconds(50))) {
    }
  }
  return std::chrono::duration<double>(Clock::now() - start).count();
}

double Median(std::vector<double> values) {
  std::nth_element(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2),
                   values.end());
  return values[values.size() / 2];
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) return 2;
  const int rounds = argc > 2 ? std::atoi(argv[2]) : 20;
  const std::size_t megabytes = argc > 3 ? static_cast<std::size_t>(std::atoi(argv[3])) : 0;
  const std::vector<char> memory(megabytes << 20, 'x');  // touched, so that it is really there

  hearthmake::posix::DriveMap drives;
  drives.SetDrive('Z', "/");
  hearthmake::posix::PosixProcessLauncher launcher(drives);
  std::vector<double> bare;
  std::vector<double> launched;
  std::vector<double> ratios;
  for (int round = 0; round < rounds; ++round) {
    bare.push_back(Bare(argv[1]));
    launched.push_back(Launched(launcher, argv[1]));
    ratios.push_back(launched.back() / bare.back());
  }
  std::printf("bare %.1f us, launcher %.1f us a start; ratio %.3f (median of %d rounds, %zu MB)\n",
              Median(bare) / kStarts * 1e6, Median(launched) / kStarts * 1e6, Median(ratios), rounds,
              memory.size() >> 20);
}
