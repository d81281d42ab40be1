#include "host/run/RewrittenFiles.hpp"

#include <gtest/gtest.h>

#include "build/Build.hpp"
#include "host/Session.hpp"
#include "support/Workbench.hpp"

namespace hearthmake::host {
namespace {

namespace fs = std::filesystem;

class RewrittenFilesTest : public testing::Test {
 protected:
  RewrittenFilesTest() : build(automation::Make<Build>()) {
    build->SetName("Shop");
    build->BeginEdit();
    build->ApplyEdit();
    bench.Write(kProject, "Type=OleDll\nName=\"Lib\"\n");
    bench.Write(kBinary, "binary");
    project = build->Projects().Add(kProject);
  }

  // So many seconds after some time.
  void SetTime(const char* path, int seconds) const {
    const fs::file_time_type start = fs::file_time_type::clock::now() - std::chrono::hours(1);
    fs::last_write_time(bench.Posix(path), start + std::chrono::seconds(seconds));
  }
  bool IsAsCompiled(const RewrittenFiles& rewritten) const {
    return rewritten.IsAsCompiled(project->Id(), bench.files->Stamp(kProject), bench.files->Stamp(kBinary));
  }

  static constexpr const char* kProject = "C:\\src\\Lib.vbp";
  static constexpr const char* kBinary = "C:\\src\\Lib.dll";
  static constexpr const char* kStore = "C:\\data\\stamps-1.json";
  support::Workbench bench;
  automation::Ref<Build> build;
  automation::Ref<Project> project;
};

TEST_F(RewrittenFilesTest, KnowsAProjectFileThatTheCompilerWroteToLast) {
  SetTime(kBinary, 0);
  SetTime(kProject, 5);
  {
    RewrittenFiles rewritten(*bench.files, kStore);
    EXPECT_FALSE(IsAsCompiled(rewritten));
    rewritten.ProjectCompiled(*project);
    rewritten.Save();
  }
  const RewrittenFiles later(*bench.files, kStore);
  EXPECT_TRUE(IsAsCompiled(later));
  SetTime(kProject, 6);
  EXPECT_FALSE(IsAsCompiled(later));
}

TEST_F(RewrittenFilesTest, ForgetsAProjectWhoseBinaryWasWrittenLast) {
  SetTime(kBinary, 0);
  SetTime(kProject, 5);
  RewrittenFiles rewritten(*bench.files, kStore);
  rewritten.ProjectCompiled(*project);
  SetTime(kBinary, 9);
  rewritten.ProjectCompiled(*project);
  rewritten.Save();
  EXPECT_EQ(bench.Read(kStore), "[]\n");
}

TEST_F(RewrittenFilesTest, WritesNoFileWhereThereIsNothingToKeep) {
  SetTime(kProject, 0);
  RewrittenFiles rewritten(*bench.files, kStore);
  rewritten.ProjectCompiled(*project);
  rewritten.Save();
  EXPECT_FALSE(bench.files->FileExists(kStore));
}

TEST_F(RewrittenFilesTest, TakesJunkForNothing) {
  for (const char* junk :
       {"", "junk", "{}", "[1]", "[[1,2]]", "[[1,2,\"x\"]]", "[[99999999999999999999,1,1]]"}) {
    bench.WriteBytes(kStore, junk);
    EXPECT_FALSE(IsAsCompiled(RewrittenFiles(*bench.files, kStore))) << junk;
  }
}

TEST_F(RewrittenFilesTest, ReadsItsRowsHoweverTheyAreSpelled) {
  SetTime(kBinary, 0);
  SetTime(kProject, 5);
  RewrittenFiles rewritten(*bench.files, kStore);
  rewritten.ProjectCompiled(*project);
  rewritten.Save();
  const std::string row = bench.Read(kStore).substr(1, bench.Read(kStore).find(']'));
  for (const std::string& text :
       {"[" + row + "]\n", "[" + row + "]", "[ " + row + " ,\n[1,2]]", "[[7,1,1]," + row + ",[9,-1,8]]\n"}) {
    bench.WriteBytes(kStore, text);
    EXPECT_TRUE(IsAsCompiled(RewrittenFiles(*bench.files, kStore))) << text;
  }
  for (const std::string& text : {"[" + row + "]]\n", "[" + row, "[" + row + "]x\n", row + "\n"}) {
    bench.WriteBytes(kStore, text);
    EXPECT_FALSE(IsAsCompiled(RewrittenFiles(*bench.files, kStore))) << text;
  }
}

TEST_F(RewrittenFilesTest, LeavesAFileAloneThatSaysTheSame) {
  SetTime(kBinary, 0);
  SetTime(kProject, 5);
  RewrittenFiles rewritten(*bench.files, kStore);
  rewritten.ProjectCompiled(*project);
  rewritten.Save();
  bench.files->Remove(kStore);
  rewritten.ProjectCompiled(*project);
  rewritten.Save();
  EXPECT_FALSE(bench.files->FileExists(kStore));
}

TEST_F(RewrittenFilesTest, IsNamedByTheBuild) { EXPECT_EQ(RewrittenFiles::FileName(12), "stamps-12.json"); }

}  // namespace
}  // namespace hearthmake::host
