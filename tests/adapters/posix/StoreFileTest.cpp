#include "adapters/posix/StoreFile.hpp"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "automation/Error.hpp"
#include "support/PosixFolder.hpp"

namespace hearthmake::posix {
namespace {

using support::PosixFolder;

constexpr std::int64_t kLimit = 100;

std::int32_t ErrorOf(const std::function<void()>& call) {
  try {
    call();
  } catch (const automation::Error& error) {
    EXPECT_NE(error.Description().find('/'), std::string::npos) << error.Description();
    return error.Number();
  }
  return 0;
}

TEST(StoreFile, ReadsAMissingFileAsEmpty) {
  const PosixFolder folder;
  StoreFile file(folder.Path("no/such"), kLimit);
  EXPECT_TRUE(file.HasChanged());
  EXPECT_EQ(file.Read(), "");
  EXPECT_FALSE(file.HasChanged());
}

TEST(StoreFile, NoticesForeignChangesButNotItsOwn) {
  const PosixFolder folder;
  StoreFile file(folder.MakeFile("a", "one"), kLimit);
  EXPECT_EQ(file.Read(), "one");
  EXPECT_FALSE(file.HasChanged());
  file.Replace("two");
  EXPECT_FALSE(file.HasChanged());
  file.Append(" three");
  EXPECT_FALSE(file.HasChanged());
  EXPECT_EQ(folder.Content("a"), "two three");
  folder.MakeFile("a", "four");
  EXPECT_TRUE(file.HasChanged());
  EXPECT_EQ(file.Read(), "four");
  std::filesystem::remove(folder.Path("a"));
  EXPECT_TRUE(file.HasChanged());
}

TEST(StoreFile, MakesAFileForItsUserAloneAndKeepsTheModeOfAnOldOne) {
  const PosixFolder folder;
  StoreFile fresh(folder.Path("x/y/a"), kLimit);
  const FileDescriptor lock = fresh.Lock();
  fresh.Replace("1");
  EXPECT_EQ(folder.Mode("x/y/a"), 0600U);
  StoreFile old(folder.MakeFile("b", "1"), kLimit);
  ASSERT_EQ(chmod(folder.Path("b").c_str(), 0640), 0);
  old.Replace("2");
  EXPECT_EQ(folder.Mode("b"), 0640U);
  EXPECT_EQ(folder.Content("b"), "2");
}

TEST(StoreFile, FollowsLinks) {
  const PosixFolder folder;
  folder.MakeFile("real/file", "old");
  std::filesystem::create_symlink("real/file", folder.Path("link"));
  StoreFile file(folder.Path("link"), kLimit);
  file.Replace("new");
  EXPECT_TRUE(std::filesystem::is_symlink(folder.Path("link")));
  EXPECT_EQ(folder.Content("real/file"), "new");
  std::filesystem::create_symlink("real/later", folder.Path("dangling"));
  StoreFile later(folder.Path("dangling"), kLimit);
  EXPECT_EQ(later.Read(), "");
  later.Replace("made");
  EXPECT_EQ(folder.Content("real/later"), "made");
}

TEST(StoreFile, RefusesWhatIsNoFileOrTooLong) {
  const PosixFolder folder;
  StoreFile inItsPlace(folder.MakeFolder("folder"), kLimit);
  EXPECT_EQ(ErrorOf([&] { inItsPlace.Read(); }), 75);
  EXPECT_EQ(ErrorOf([&] { inItsPlace.Replace("x"); }), 75);
  StoreFile tooLong(folder.MakeFile("long", std::string(101, 'x')), kLimit);
  EXPECT_EQ(ErrorOf([&] { tooLong.Read(); }), 45);
  ASSERT_EQ(mkfifo(folder.Path("pipe").c_str(), 0600), 0);
  StoreFile pipe(folder.Path("pipe"), kLimit);
  EXPECT_EQ(ErrorOf([&] { pipe.Read(); }), 75);
  StoreFile below(folder.MakeFile("file") + "/x", kLimit);
  EXPECT_NE(ErrorOf([&] { const FileDescriptor lock = below.Lock(); }), 0);
}

TEST(StoreFile, LeavesNothingBesideTheFileButTheLock) {
  const PosixFolder folder;
  StoreFile file(folder.Path("a"), kLimit);
  {
    const FileDescriptor lock = file.Lock();
    file.Replace("1");
  }
  const auto count = std::distance(std::filesystem::directory_iterator(folder.Path()), {});
  EXPECT_EQ(count, 2);
}

}  // namespace
}  // namespace hearthmake::posix
