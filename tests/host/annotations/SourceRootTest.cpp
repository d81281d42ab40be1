#include "host/annotations/SourceRoot.hpp"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/PosixFolder.hpp"

namespace hearthmake::host {
namespace {

using support::EnvironmentOverride;

class SourceRootTest : public testing::Test {
 protected:
  support::PosixFolder folder;
  // The machine on which the tests run may be a CI service's.
  EnvironmentOverride github{"GITHUB_WORKSPACE", std::nullopt};
  EnvironmentOverride gitlab{"CI_PROJECT_DIR", std::nullopt};
  EnvironmentOverride azure{"BUILD_SOURCESDIRECTORY", std::nullopt};
  EnvironmentOverride jenkins{"WORKSPACE", std::nullopt};
};

TEST_F(SourceRootTest, IsWhatTheServiceSays) {
  for (const char* variable : {"GITHUB_WORKSPACE", "CI_PROJECT_DIR", "BUILD_SOURCESDIRECTORY", "WORKSPACE"}) {
    const EnvironmentOverride service(variable, folder.Path());
    EXPECT_EQ(SourceRoot::Find("/elsewhere/a.vbp").Folder(), folder.Path()) << variable;
  }
}

TEST_F(SourceRootTest, IsTheWorkTreeOfGitElsewhere) {
  folder.MakeFolder("repo/.git");
  const std::string file = folder.MakeFile("repo/src/deep/a.vbp");
  EXPECT_EQ(SourceRoot::Find(file).Folder(), std::filesystem::canonical(folder.Path("repo")).string());
  folder.MakeFile("linked/.git", "gitdir: elsewhere\n");
  EXPECT_EQ(SourceRoot::Find(folder.Path("linked/b.vbp")).Folder(),
            std::filesystem::canonical(folder.Path("linked")).string());
}

TEST_F(SourceRootTest, IgnoresAServiceWhoseFolderIsNotThere) {
  const EnvironmentOverride service("WORKSPACE", folder.Path("gone"));
  EXPECT_NE(SourceRoot::Find("/").Folder(), folder.Path("gone"));
}

TEST_F(SourceRootTest, IsTheCurrentFolderWhereNothingElseIsKnown) {
  EXPECT_EQ(SourceRoot::Find(folder.Path("a.vbp")).Folder(), std::filesystem::current_path().string());
}

TEST_F(SourceRootTest, NamesFilesFromTheRootOn) {
  const SourceRoot root(folder.Path());
  EXPECT_EQ(root.Relative(folder.Path("src/a b.cls")), "src/a b.cls");
  EXPECT_EQ(root.Relative(folder.Path("src/../x.cls")), "x.cls");
}

TEST_F(SourceRootTest, LeavesPathsOutsideOfItAlone) {
  const SourceRoot root(folder.Path("a"));
  EXPECT_EQ(root.Relative(folder.Path("ab/x.cls")), folder.Path("ab/x.cls"));
  EXPECT_EQ(root.Relative("C:\\nowhere\\x.cls"), "C:\\nowhere\\x.cls");
  EXPECT_EQ(root.Relative(""), "");
  EXPECT_EQ(root.Relative(folder.Path("a")), folder.Path("a"));
}

TEST_F(SourceRootTest, SeesThroughLinks) {
  folder.MakeFile("real/src/a.cls");
  std::filesystem::create_symlink(folder.Path("real"), folder.Path("link"));
  EXPECT_EQ(SourceRoot(folder.Path("link")).Relative(folder.Path("real/src/a.cls")), "src/a.cls");
  EXPECT_EQ(SourceRoot(folder.Path("real")).Relative(folder.Path("link/src/a.cls")), "src/a.cls");
}

}  // namespace
}  // namespace hearthmake::host
