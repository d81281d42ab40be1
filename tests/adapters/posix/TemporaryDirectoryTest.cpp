#include "adapters/posix/TemporaryDirectory.hpp"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>

#include "automation/Error.hpp"
#include "support/PosixFolder.hpp"

namespace hearthmake::posix {
namespace {

namespace fs = std::filesystem;
using support::EnvironmentOverride;

TEST(TemporaryDirectory, IsPrivateAndNewEachTime) {
  const TemporaryDirectory one;
  const TemporaryDirectory two;
  EXPECT_NE(one.Path(), two.Path());
  EXPECT_EQ(fs::status(one.Path()).permissions(), fs::perms(0700));
  EXPECT_EQ(one.Path().find(' '), std::string::npos);
}

TEST(TemporaryDirectory, LiesWhereTheUserWantsTemporaryFiles) {
  const support::PosixFolder folder;
  const EnvironmentOverride wanted("TMPDIR", folder.Path() + "/");
  EXPECT_TRUE(TemporaryDirectory().Path().starts_with(folder.Path() + "/hearthmake-"));
}

TEST(TemporaryDirectory, AvoidsFoldersThatCanNotBeUsed) {
  const support::PosixFolder folder;
  for (const std::string& unusable : {folder.MakeFolder("with blank"), folder.Path("none"),
                                      folder.MakeFile("file"), std::string("relative"), std::string()}) {
    const EnvironmentOverride wanted("TMPDIR", unusable);
    EXPECT_TRUE(TemporaryDirectory().Path().starts_with("/tmp/hearthmake-")) << unusable;
  }
  const EnvironmentOverride none("TMPDIR", std::nullopt);
  EXPECT_TRUE(TemporaryDirectory().Path().starts_with("/tmp/hearthmake-"));
}

TEST(TemporaryDirectory, GoesWithAllItHolds) {
  const support::PosixFolder outside;
  outside.MakeFile("kept/a");
  std::string path;
  {
    const TemporaryDirectory folder;
    path = folder.Path();
    fs::create_directories(path + "/sub/deeper");
    fs::create_directory_symlink(outside.Path("kept"), path + "/sub/link");
    fs::permissions(path + "/sub/deeper", fs::perms::none);
    fs::permissions(path + "/sub", fs::perms(0500));
  }
  EXPECT_FALSE(fs::exists(path));
  EXPECT_TRUE(fs::exists(outside.Path("kept/a")));
}

TEST(TemporaryDirectory, LiesInTheFolderThatIsGiven) {
  const support::PosixFolder folder;
  const EnvironmentOverride other("TMPDIR", "/tmp");
  const TemporaryDirectory made(folder.Path());
  EXPECT_EQ(fs::path(made.Path()).parent_path(), folder.Path());
}

TEST(TemporaryDirectory, RefusesAGivenFolderThatIsOfNoUse) {
  const support::PosixFolder folder;
  for (const std::string& parent :
       {folder.MakeFolder("a blank"), folder.Path("missing"), std::string("relative")}) {
    EXPECT_THROW(TemporaryDirectory{parent}, automation::Error) << parent;
  }
}

// Runs the body in a forked process that then calls exit.
template <class Body>
void InProcessThatExits(Body body) {
  const pid_t child = fork();
  if (child == 0) {
    body();
    std::exit(0);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  ASSERT_TRUE(WIFEXITED(status));
}

TEST(TemporaryDirectory, GoesWhenTheProcessExits) {
  const support::PosixFolder folder;
  const EnvironmentOverride wanted("TMPDIR", folder.Path());
  InProcessThatExits([] {
    const auto* leaked = new TemporaryDirectory;
    static const TemporaryDirectory* keep = leaked;
    if (!fs::exists(keep->Path())) std::abort();
  });
  EXPECT_TRUE(fs::is_empty(folder.Path()));
}

TEST(TemporaryDirectory, AForkedChildLeavesItAlone) {
  const TemporaryDirectory folder;
  InProcessThatExits([] {});
  EXPECT_TRUE(fs::exists(folder.Path()));
}

}  // namespace
}  // namespace hearthmake::posix
