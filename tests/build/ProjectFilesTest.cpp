#include "build/ProjectFiles.hpp"

#include <gtest/gtest.h>

#include "support/BuildScene.hpp"

namespace hearthmake {
namespace {

using support::BuildScene;
using Candidates = ProjectFiles::Candidates;

TEST(ProjectFiles, FindsAProjectByBinaryPathBinaryNameAndProjectFile) {
  const BuildScene scene;
  const auto lib = scene.Add("Lib", "OleDll", "Path32=\"..\\bin\"\n");
  ProjectFiles files;
  files.Add(*lib);
  EXPECT_EQ(files.ByBinaryPath("C:\\BIN\\lib.dll"), Candidates{lib.Get()});
  EXPECT_EQ(files.ByBinaryName("LIB.DLL"), Candidates{lib.Get()});
  EXPECT_EQ(files.ByProjectPath("c:\\SRC\\lib.VBP"), Candidates{lib.Get()});
  EXPECT_TRUE(files.ByBinaryPath("C:\\src\\Lib.dll").empty());
  EXPECT_TRUE(files.ByBinaryName("Lib").empty());
}

TEST(ProjectFiles, GivesEveryProjectThatAnswers) {
  const BuildScene scene;
  const auto a = scene.Add("A", "OleDll", "Path32=\"..\\one\"\n");
  const auto b = scene.Add("B");
  b->BeginEdit();
  b->SetExeName32("a.DLL");
  b->ApplyEdit();
  ProjectFiles files;
  files.Add(*a);
  files.Add(*b);
  EXPECT_EQ(files.ByBinaryName("A.dll"), (Candidates{a.Get(), b.Get()}));
  EXPECT_EQ(files.ByBinaryPath("C:\\one\\A.dll"), Candidates{a.Get()});
}

TEST(ProjectFiles, ARemovedProjectIsNotFound) {
  const BuildScene scene;
  const auto lib = scene.Add("Lib");
  ProjectFiles files;
  files.Add(*lib);
  files.Remove(*lib);
  EXPECT_TRUE(files.ByBinaryName("Lib.dll").empty());
  EXPECT_TRUE(files.ByProjectPath("C:\\src\\Lib.vbp").empty());
  files.Remove(*lib);
}

TEST(ProjectFiles, AMarkedProjectIsLookedAtAgain) {
  const BuildScene scene;
  const auto lib = scene.Add("Lib");
  ProjectFiles files;
  files.Add(*lib);
  lib->SetExeName32("New.dll");
  EXPECT_TRUE(files.ByBinaryName("New.dll").empty());
  files.MarkChanged(*lib);
  EXPECT_EQ(files.ByBinaryName("New.dll"), Candidates{lib.Get()});
  EXPECT_TRUE(files.ByBinaryName("Lib.dll").empty());
}

TEST(ProjectFiles, AProjectOfNoKnownTypeHasAProjectFileOnly) {
  const support::Workbench bench;
  const auto project = automation::Make<Project>();
  project->SetProjectPath("C:\\src\\New.vbp");
  ProjectFiles files;
  files.Add(*project);
  EXPECT_EQ(files.ByProjectPath("C:\\src\\New.vbp"), Candidates{project.Get()});
  EXPECT_TRUE(files.ByBinaryName("").empty());
  files.Remove(*project);
}

TEST(ProjectFiles, AListNoticesWhenABinaryIsRenamed) {
  const BuildScene scene;
  const auto lib = scene.Add("Lib");
  const auto user = scene.Add("User", "Exe");
  const std::string toNew = "Reference=*\\G{1}#1.0#0#New.dll#x";
  auto& projects = scene.build->Projects();
  EXPECT_EQ(projects.FindByReferenceRow("Reference=*\\G{1}#1.0#0#Lib.dll#x", *user), lib.Get());
  EXPECT_EQ(projects.FindByReferenceRow(toNew, *user), nullptr);
  lib->BeginEdit();
  lib->SetExeName32("New.dll");
  EXPECT_EQ(projects.FindByReferenceRow(toNew, *user), lib.Get());
  lib->CancelEdit();
  EXPECT_EQ(projects.FindByReferenceRow(toNew, *user), nullptr);
}

}  // namespace
}  // namespace hearthmake
