#include "adapters/posix/PosixSystemInfo.hpp"

#include <gtest/gtest.h>

#include "support/PosixFolder.hpp"

namespace hearthmake::posix {
namespace {

TEST(PosixSystemInfo, TellsWhatTheHostDecided) {
  PosixSystemInfo info({"Z:\\tmp\\x", "C:\\windows\\system32", "C:\\Hearthmake", 4});
  EXPECT_EQ(info.TemporaryFolder(), "Z:\\tmp\\x\\");
  EXPECT_EQ(info.SystemFolder(), "C:\\windows\\system32");
  EXPECT_EQ(info.ComponentFolder(), "C:\\Hearthmake");
  EXPECT_EQ(info.MajorVersion(), 4);
}

TEST(PosixSystemInfo, FoldersEndAsTheyShould) {
  PosixSystemInfo info({"C:\\temp\\\\", "C:\\windows\\", "D:\\", 5});
  EXPECT_EQ(info.TemporaryFolder(), "C:\\temp\\");
  EXPECT_EQ(info.SystemFolder(), "C:\\windows");
  EXPECT_EQ(info.ComponentFolder(), "D:\\");
}

TEST(PosixSystemInfo, FindsEnvironmentVariablesWithoutRegardToCase) {
  PosixSystemInfo info({});
  const support::EnvironmentOverride upper("HEARTHMAKE_TEST_NAME", "upper = value");
  EXPECT_EQ(info.EnvironmentVariable("hearthmake_Test_name"), "upper = value");
  const support::EnvironmentOverride lower("hearthmake_test_name", "");
  EXPECT_EQ(info.EnvironmentVariable("hearthmake_test_name"), "");
  EXPECT_EQ(info.EnvironmentVariable("HEARTHMAKE_TEST_NAME"), "upper = value");
  EXPECT_EQ(info.EnvironmentVariable("HEARTHMAKE_TEST_NAM"), std::nullopt);
  EXPECT_EQ(info.EnvironmentVariable(""), std::nullopt);
  EXPECT_EQ(info.EnvironmentVariable("HEARTHMAKE_TEST_NAME=upper "), std::nullopt);
}

}  // namespace
}  // namespace hearthmake::posix
