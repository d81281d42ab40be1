#include "adapters/posix/FileDescriptor.hpp"

#include <fcntl.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <string>
#include <utility>

#include "support/PosixFolder.hpp"

namespace hearthmake::posix {
namespace {

bool IsOpen(int descriptor) { return fcntl(descriptor, F_GETFD) >= 0; }

TEST(FileDescriptor, ClosesWhatItOwns) {
  FileDescriptor first(open("/dev/null", O_RDONLY | O_CLOEXEC));
  const int number = first.Get();
  FileDescriptor second(std::move(first));
  EXPECT_EQ(second.Get(), number);
  EXPECT_TRUE(IsOpen(number));
  second.Reset();
  EXPECT_FALSE(second);
  EXPECT_FALSE(IsOpen(number));
}

TEST(FileDescriptor, ReadsUpToTheEnd) {
  const support::PosixFolder folder;
  const FileDescriptor file(open(folder.MakeFile("a", "12345").c_str(), O_RDONLY | O_CLOEXEC));
  std::string buffer(3, '.');
  EXPECT_EQ(file.ReadFully(buffer.data(), 3), 3);
  EXPECT_EQ(buffer, "123");
  EXPECT_EQ(file.ReadFully(buffer.data(), 3), 2);
  EXPECT_EQ(file.ReadFully(buffer.data(), 3), 0);
  EXPECT_EQ(FileDescriptor().ReadFully(buffer.data(), 3), -1);
}

TEST(FileDescriptor, TellsWhatKeptItFromWriting) {
  const FileDescriptor full(open("/dev/full", O_WRONLY | O_CLOEXEC));
  if (!full) GTEST_SKIP() << "no /dev/full here";
  EXPECT_EQ(full.WriteAll("x"), ENOSPC);
  EXPECT_EQ(full.WriteAll(""), 0);
}

}  // namespace
}  // namespace hearthmake::posix
