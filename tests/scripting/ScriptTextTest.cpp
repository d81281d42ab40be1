#include "scripting/ScriptText.hpp"

#include <gtest/gtest.h>

#include "support/BuildScene.hpp"
#include "support/ErrorExpect.hpp"

namespace hearthmake::ScriptText {
namespace {

using automation::BuildErrors;
using support::BuildScene;
using support::ErrorOf;
using support::ExpectError;

TEST(DoIncludes, PutsTheTextOfTheFileOnLinesOfItsOwn) {
  const BuildScene scene;
  scene.Write("C:\\src\\lib.vbs", "x = 1");
  EXPECT_EQ(DoIncludes("a\r\n'Include<C:\\src\\lib.vbs> rest\r\nb"), "a\r\n'\r\nx = 1\r\n rest\r\nb");
}

TEST(DoIncludes, LeavesADirectiveWithoutCommentMarkAsItIs) {
  const BuildScene scene;
  scene.Write("C:\\src\\lib.vbs", "x = 1");
  const std::string text = "' a comment\r\nInclude<C:\\src\\lib.vbs>\n'Include<C:\\src\\lib.vbs";
  EXPECT_EQ(DoIncludes(text), text);
}

TEST(DoIncludes, FindsTheMarkAnywhereBeforeItOnTheLine) {
  const BuildScene scene;
  scene.Write("C:\\src\\lib.vbs", "L");
  EXPECT_EQ(DoIncludes("x = 1 ' see Include<C:\\src\\lib.vbs>!"), "x = 1 ' see \r\nL\r\n!");
  EXPECT_EQ(DoIncludes("'\rInclude<C:\\src\\lib.vbs>"), "'\rInclude<C:\\src\\lib.vbs>");
}

TEST(DoIncludes, ExpandsDirectivesOfIncludedFilesAndSeveralInOneText) {
  const BuildScene scene;
  scene.Write("C:\\src\\outer.vbs", "'Include<C:\\src\\inner.vbs>\nouter");
  scene.Write("C:\\src\\inner.vbs", "inner");
  EXPECT_EQ(DoIncludes("'Include<C:\\src\\outer.vbs>\r\n'Include<C:\\src\\inner.vbs>"),
            "'\r\n'\r\ninner\r\n\r\nouter\r\n\r\n'\r\ninner\r\n");
}

TEST(DoIncludes, ReadsFilesAsWindows1252) {
  const BuildScene scene;
  scene.WriteBytes("C:\\src\\lib.vbs", "s = \"\xE9\x80\"");
  EXPECT_EQ(DoIncludes("'Include<C:\\src\\lib.vbs>"), "'\r\ns = \"é€\"\r\n");
}

TEST(DoIncludes, AFileThatCanNotBeOpenedIsNamed) {
  const BuildScene scene;
  ExpectError([] { DoIncludes("'Include<C:\\src\\no.vbs>"); }, BuildErrors::beOpenIncludeFile,
              "Scripts.DoIncludes", "Could not open include file C:\\src\\no.vbs");
}

TEST(DoIncludes, AFileThatIncludesItselfRunsOutOfMemory) {
  const BuildScene scene;
  scene.Write("C:\\src\\me.vbs", "'Include<C:\\src\\me.vbs>\nagain");
  EXPECT_EQ(ErrorOf([] { DoIncludes("'Include<C:\\src\\me.vbs>"); }).Number(), 7);
}

TEST(EvaluateInternals, ReplacesAPathInEveryPlace) {
  const BuildScene scene;
  scene.Add("Lib");
  EXPECT_EQ(EvaluateInternals("%Build.Name% has %Build.Projects.Count%, %Build.Name%", *scene.build),
            "Suite has 1, Suite");
}

TEST(EvaluateInternals, LeavesAPlaceholderWithoutEndAndOtherCase) {
  const BuildScene scene;
  EXPECT_EQ(EvaluateInternals("%build.Name% %Build.Name", *scene.build), "%build.Name% %Build.Name");
}

TEST(EvaluateInternals, APathThatCanNotBeReadFails) {
  const BuildScene scene;
  for (const std::string path : {"Nosuch", "Projects.Nosuch", "Name.Length", "", "Projects.", "FailedProject",
                                 "FailedProject.Name", "Projects"}) {
    ExpectError([&] { EvaluateInternals("%Build." + path + "%", *scene.build); },
                BuildErrors::beEvaluateInternalsFaild, "Scripts.EvaluateInternals",
                "Method " + path + " failed");
  }
}

TEST(EvaluateInternals, NeverCallsAMethod) {
  const BuildScene scene;
  scene.Add("Lib");
  EXPECT_EQ(ErrorOf([&] { EvaluateInternals("%Build.Kill%", *scene.build); }).Description(),
            "Method Kill failed");
  EXPECT_EQ(scene.build->Projects().Count(), 1);
}

TEST(EvaluateInternals, AValueMayHoldOtherPlaceholdersButNotItsOwn) {
  const BuildScene scene;
  scene.build->SetName("%Build.Projects.Count%");
  EXPECT_EQ(EvaluateInternals("%Build.Name%", *scene.build), "0");
  scene.build->SetName("x%Build.Name%");
  ExpectError([&] { EvaluateInternals("%Build.Name%", *scene.build); }, BuildErrors::beEvaluateInternalsFaild,
              "Scripts.EvaluateInternals", "Method Name failed");
}

TEST(EvaluateInternals, ValuesThatGrowTheTextWithoutEndRunOutOfMemory) {
  const BuildScene scene;
  scene.build->Scripts().SetBuildFailed(std::string(1'000'000, 'x'));
  std::string text;
  for (int i = 0; i < 80; ++i) text += "%Build.Scripts.BuildFailed%";
  ExpectError([&] { EvaluateInternals(text, *scene.build); }, 7, "Scripts.EvaluateInternals",
              "Out of memory");
}

TEST(EvaluateInternals, AnObjectStandsForItsDefaultProperty) {
  const BuildScene scene;
  scene.Add("Bad");
  scene.FailOn("Bad");
  scene.build->Projects().Build(false);
  EXPECT_EQ(EvaluateInternals("%Build.FailedProject%", *scene.build), "Bad");
}

}  // namespace
}  // namespace hearthmake::ScriptText
