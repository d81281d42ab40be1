#include "adapters/posix/FileFailure.hpp"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdint>

#include "support/PosixFolder.hpp"

namespace hearthmake::posix {
namespace {

std::int32_t NumberOf(int error) {
  try {
    RaiseErrno(error, "C:\\a");
  } catch (const automation::Error& failure) {
    return failure.Number();
  }
}

TEST(FileFailure, CarriesSourceTextAndPath) {
  try {
    RaiseFileFailure(automation::RuntimeError::DiskFull, "C:\\a b");
  } catch (const automation::Error& failure) {
    EXPECT_EQ(failure.Number(), 61);
    EXPECT_EQ(failure.Source(), "FileSystem");
    EXPECT_EQ(failure.Description(), "Disk full: C:\\a b");
  }
}

TEST(FileFailure, HasTheNumbersOfVisualBasic) {
  for (const int error : {ENOENT, ENOTDIR}) EXPECT_EQ(NumberOf(error), 76) << error;
  for (const int error : {EACCES, EPERM, EROFS, EBUSY, ETXTBSY}) EXPECT_EQ(NumberOf(error), 70) << error;
  for (const int error : {EISDIR, ENOTEMPTY, ENXIO, ELOOP}) EXPECT_EQ(NumberOf(error), 75) << error;
  for (const int error : {ENOSPC, EDQUOT, EFBIG}) EXPECT_EQ(NumberOf(error), 61) << error;
  EXPECT_EQ(NumberOf(EEXIST), 58);
  EXPECT_EQ(NumberOf(ENAMETOOLONG), 52);
  EXPECT_EQ(NumberOf(ENOMEM), 7);
  EXPECT_EQ(NumberOf(EIO), 57);
}

TEST(FileFailure, TellsAMissingFileFromAMissingFolder) {
  const support::PosixFolder folder;
  const auto number = [](const std::string& path) {
    try {
      RaiseFileErrno(ENOENT, "C:\\a", path);
    } catch (const automation::Error& failure) {
      return failure.Number();
    }
  };
  EXPECT_EQ(number(folder.Path("a")), 53);
  EXPECT_EQ(number("/a"), 53);
  EXPECT_EQ(number(folder.Path("none/a")), 76);
  EXPECT_EQ(number(folder.MakeFile("file") + "/a"), 76);
  EXPECT_EQ(number(""), 76);
}

}  // namespace
}  // namespace hearthmake::posix
