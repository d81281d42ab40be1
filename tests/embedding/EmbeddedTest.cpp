#include "embedding/Embedded.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "automation/Error.hpp"
#include "build/Build.hpp"
#include "build/Builds.hpp"
#include "foundation/Settings.hpp"
#include "support/PosixFolder.hpp"

namespace hearthmake::embedding {
namespace {

using automation::Error;
using automation::Make;
using testing::ElementsAre;

class EmbeddedTest : public testing::Test {
 protected:
  EmbeddedTest() { options.dataFolder = folder.Path("new/data"); }

  automation::Ref<Build> MakeBuild(const char* name) {
    auto build = Make<Build>();
    build->BeginEdit();
    build->SetName(name);
    build->ApplyEdit();
    return build;
  }

  support::PosixFolder folder;
  Options options;
};

TEST_F(EmbeddedTest, MakesTheDataFolderAndTheDatabase) {
  {
    const Embedded library(options);
    EXPECT_TRUE(std::filesystem::exists(options.dataFolder + "/Build.mdb"));
    MakeBuild("Shop");
  }
  const Embedded library(options);
  const auto builds = Make<Builds>();
  builds->LoadAll();
  EXPECT_EQ(builds->Count(), 1);
  EXPECT_EQ(builds->Item(automation::Variant::FromLong(1))->Name(), "Shop");
}

TEST_F(EmbeddedTest, MapsPathsByItsDrives) {
  options.drives = {{'S', folder.MakeFolder("src")}};
  const Embedded library(options);
  EXPECT_EQ(library.ToDosPath(folder.Path("src/Lib/Lib.vbp")), "S:\\Lib\\Lib.vbp");
  EXPECT_EQ(library.ToSystemPath("S:\\Lib\\Lib.vbp"), folder.Path("src/Lib/Lib.vbp"));
  EXPECT_EQ(library.ToSystemPath("C:\\x"), options.dataFolder + "/drive_c/x");
  EXPECT_FALSE(library.ToSystemPath("Q:\\x").has_value());
}

TEST_F(EmbeddedTest, KeepsTheSettingsInTheDataFolderUnlessToldWhere) {
  const auto setCompiler = [](const char* path) {
    const auto settings = Make<Settings>();
    settings->BeginEdit();
    settings->SetVBExe(path);
    settings->ApplyEdit();
  };
  {
    const Embedded library(options);
    setCompiler("Z:\\one");
  }
  EXPECT_TRUE(std::filesystem::exists(options.dataFolder + "/settings.ini"));
  options.settingsFile = folder.Path("elsewhere.ini");
  const Embedded library(options);
  EXPECT_NE(Make<Settings>()->VBExe(), "Z:\\one");
  setCompiler("Z:\\two");
  EXPECT_TRUE(std::filesystem::exists(options.settingsFile));
}

TEST_F(EmbeddedTest, RefusesWhatItCantWorkWith) {
  EXPECT_THROW(Embedded(Options{}), Error);
  folder.MakeFile("file", "");
  options.dataFolder = folder.Path("file/data");
  EXPECT_THROW(Embedded{options}, Error);
  options.dataFolder = folder.Path("data");
  options.drives = {{'1', "/"}};
  EXPECT_THROW(Embedded{options}, Error);
  options.drives.clear();
  options.winePrefix = folder.Path("none");
  EXPECT_THROW(Embedded{options}, Error);
}

class Ear final : public BuildEvents {
 public:
  void WillCompile(Project& objProject, bool& /*bCancel*/) override {
    heard.push_back("will " + objProject.Name());
  }
  void ProjectCompiled(Project& objProject) override { heard.push_back("did " + objProject.Name()); }
  void BuildComplete() override { heard.push_back("complete"); }
  void BuildFaild(Project* /*objProject*/, const std::string& strMessage, bool /*bCompileError*/) override {
    heard.push_back("failed: " + strMessage);
  }
  std::vector<std::string> heard;
};

TEST_F(EmbeddedTest, RunsABuildAndWaitsWithItsHost) {
  folder.MakeFile("vb6",
                  "#!/bin/sh\nsleep 0.3\nlog=$(printf %s \"$4\" | sed -e 's|^Z:||' -e 's|\\\\|/|g')\n"
                  "printf \"Build of 'Tool' succeeded.\\r\\n\" >\"$log\"\n");
  std::filesystem::permissions(folder.Path("vb6"), std::filesystem::perms::owner_all);
  folder.MakeFile("Tool.vbp", "Type=Exe\r\nStartup=\"Sub Main\"\r\nName=\"Tool\"\r\nMajorVer=1\r\n");
  int waits = 0;
  options.onWait = [&] { ++waits; };
  const Embedded library(options);
  const auto settings = Make<Settings>();
  settings->BeginEdit();
  settings->SetVBExe(library.ToDosPath(folder.Path("vb6")));
  settings->ApplyEdit();
  const auto build = MakeBuild("Shop");
  build->Projects().Add(library.ToDosPath(folder.Path("Tool.vbp")));
  Ear ear;
  build->AddSink(ear);
  EXPECT_TRUE(build->Projects().Build(false));
  build->RemoveSink(ear);
  build->Kill();
  EXPECT_THAT(ear.heard, ElementsAre("will Tool", "did Tool", "complete"));
  EXPECT_GT(waits, 0);
}

}  // namespace
}  // namespace hearthmake::embedding
