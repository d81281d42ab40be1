#include "adapters/posix/PosixSharedFile.hpp"

#include <gtest/gtest.h>

#include <future>

#include "support/ErrorExpect.hpp"
#include "support/PosixFolder.hpp"

namespace hearthmake::posix {
namespace {

TEST(PosixSharedFile, IsReadAndReplacedAsAWhole) {
  const support::PosixFolder folder;
  PosixSharedFile file(folder.Path("store"), 100);
  EXPECT_EQ(file.Path(), folder.Path("store"));
  EXPECT_EQ(file.Read(), "");
  file.Replace("one");
  PosixSharedFile(folder.Path("store"), 100).Replace("another");
  EXPECT_EQ(file.Read(), "another");
}

TEST(PosixSharedFile, RefusesMoreThanItsLimit) {
  const support::PosixFolder folder;
  PosixSharedFile file(folder.MakeFile("store", "12345"), 4);
  EXPECT_EQ(support::ErrorOf([&] { file.Read(); }).Number(), 45);
}

TEST(PosixSharedFile, HasOneHolderOfItsLockAtATime) {
  const support::PosixFolder folder;
  PosixSharedFile file(folder.Path("store"), 100);
  std::shared_ptr<void> lock = file.Lock();
  auto other =
      std::async(std::launch::async, [&] { return PosixSharedFile(folder.Path("store"), 100).Lock(); });
  EXPECT_EQ(other.wait_for(std::chrono::milliseconds(100)), std::future_status::timeout);
  lock.reset();
  EXPECT_EQ(other.wait_for(std::chrono::seconds(10)), std::future_status::ready);
}

}  // namespace
}  // namespace hearthmake::posix
