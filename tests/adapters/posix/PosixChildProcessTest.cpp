#include "adapters/posix/PosixChildProcess.hpp"

#include <gtest/gtest.h>
#include <spawn.h>
#include <unistd.h>

namespace hearthmake::posix {
namespace {

using namespace std::chrono_literals;

class PosixChildProcessTest : public ::testing::Test {
 protected:
  // A child that sleeps for so many seconds.
  std::unique_ptr<PosixChildProcess> Sleep(const char* seconds, PosixChildProcess::Waiting waiting) {
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
    const char* const arguments[] = {"sleep", seconds, nullptr};
    pid_t child = 0;
    EXPECT_EQ(
        posix_spawnp(&child, "sleep", nullptr, &attributes, const_cast<char* const*>(arguments), environ), 0);
    posix_spawnattr_destroy(&attributes);
    m_table->Add(child);
    return std::make_unique<PosixChildProcess>(m_table, child, waiting);
  }

  std::shared_ptr<ChildTable> m_table = std::make_shared<ChildTable>(2s);
};

TEST_F(PosixChildProcessTest, WaitsByDescriptor) {
  const auto child = Sleep("0.05", PosixChildProcess::Waiting::Descriptor);
  EXPECT_FALSE(child->Wait(1ms));
  EXPECT_TRUE(child->Wait(std::chrono::milliseconds::max()));
}

TEST_F(PosixChildProcessTest, WaitsByPausesWhereThereAreNoDescriptors) {
  const auto child = Sleep("0.05", PosixChildProcess::Waiting::Pauses);
  EXPECT_FALSE(child->Wait(1ms));
  EXPECT_TRUE(child->Wait(std::chrono::milliseconds::max()));
  const auto lasting = Sleep("60", PosixChildProcess::Waiting::Pauses);
  EXPECT_FALSE(lasting->Wait(20ms));
  lasting->Terminate();
  EXPECT_TRUE(lasting->Wait(0ms));
}

TEST_F(PosixChildProcessTest, TakesANegativeTimeAsNone) {
  const auto child = Sleep("60", PosixChildProcess::Waiting::Descriptor);
  EXPECT_FALSE(child->Wait(-5ms));
  child->Terminate();
}

}  // namespace
}  // namespace hearthmake::posix
