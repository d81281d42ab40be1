#include "host/annotations/AnnotationFormat.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/PosixFolder.hpp"

namespace hearthmake::host {
namespace {

using support::EnvironmentOverride;
using testing::EndsWith;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Not;

const AnnotationGroup kGroup{7, "Lib"};
const RunProblem kProblem{"/src/a.cls", 12, "Variable not defined", "Lib", true};
// Everything that somebody has to escape.
const RunProblem kHard{"/src/a,b:c;d].cls", 3, "100%\r\n::error:: |'[x]' Größe 😀", "L:i,b", true};

TEST(AnnotationFormat, IsNoneForUnknownServices) {
  EXPECT_EQ(MakeAnnotationFormat(""), nullptr);
  EXPECT_EQ(MakeAnnotationFormat("x"), nullptr);
}

TEST(AnnotationFormat, FindsTheServiceByItsVariables) {
  const EnvironmentOverride github("GITHUB_ACTIONS", std::nullopt);
  const EnvironmentOverride gitlab("GITLAB_CI", std::nullopt);
  const EnvironmentOverride azure("TF_BUILD", std::nullopt);
  const EnvironmentOverride teamcity("TEAMCITY_VERSION", std::nullopt);
  EXPECT_EQ(MakeAnnotationFormat("auto"), nullptr);
  const std::vector<std::pair<std::string, std::string>> services = {{"GITHUB_ACTIONS", "true"},
                                                                     {"GITLAB_CI", "true"},
                                                                     {"TF_BUILD", "True"},
                                                                     {"TEAMCITY_VERSION", "2024.03"}};
  const std::vector<std::string> names = {"github", "gitlab", "azure", "teamcity"};
  for (std::size_t i = 0; i < services.size(); ++i) {
    const EnvironmentOverride service(services[i].first.c_str(), services[i].second);
    const auto found = MakeAnnotationFormat("auto");
    ASSERT_NE(found, nullptr) << names[i];
    EXPECT_EQ(found->Problem(kProblem, "a.cls"), MakeAnnotationFormat(names[i])->Problem(kProblem, "a.cls"));
  }
}

TEST(GitHubFormat, WritesWorkflowCommands) {
  const auto format = MakeAnnotationFormat("github");
  EXPECT_EQ(format->Open(kGroup), "::group::Lib\n");
  EXPECT_EQ(format->Close(kGroup), "::endgroup::\n");
  EXPECT_EQ(format->ProblemInside(kProblem), "");
  EXPECT_EQ(format->Problem(kProblem, "src/a.cls"),
            "::error file=src/a.cls,line=12,title=Lib::Variable not defined\n");
}

TEST(GitHubFormat, LeavesOutWhatIsNotKnown) {
  const auto format = MakeAnnotationFormat("github");
  EXPECT_EQ(format->Problem({"", 0, "No disk", "", false}, ""), "::error::No disk\n");
  EXPECT_EQ(format->Problem({"/a.vbp", 0, "No disk", "", false}, "a.vbp"), "::error file=a.vbp::No disk\n");
}

TEST(GitHubFormat, EscapesByTheRulesOfTheRunner) {
  EXPECT_EQ(MakeAnnotationFormat("github")->Problem(kHard, "a,b:c;d].cls"),
            "::error file=a%2Cb%3Ac;d].cls,line=3,title=L%3Ai%2Cb::"
            "100%25%0D%0A::error:: |'[x]' Größe 😀\n");
}

TEST(AzureFormat, WritesLoggingCommands) {
  const auto format = MakeAnnotationFormat("azure");
  EXPECT_EQ(format->Open(kGroup), "##[group]Lib\n");
  EXPECT_EQ(format->Close(kGroup), "##[endgroup]\n");
  EXPECT_EQ(
      format->Problem(kProblem, "src/a.cls"),
      "##vso[task.logissue type=error;sourcepath=/src/a.cls;linenumber=12;]Lib: Variable not defined\n");
  EXPECT_EQ(format->Problem({"", 0, "No disk", "", false}, ""), "##vso[task.logissue type=error;]No disk\n");
}

TEST(AzureFormat, EscapesByTheRulesOfTheAgent) {
  EXPECT_EQ(MakeAnnotationFormat("azure")->Problem(kHard, ""),
            "##vso[task.logissue type=error;sourcepath=/src/a,b:c%3Bd%5D.cls;linenumber=3;]"
            "L:i,b: 100%AZP25%0D%0A::error:: |'[x]' Größe 😀\n");
}

TEST(GitLabFormat, WritesSectionsAndNoProblems) {
  const auto format = MakeAnnotationFormat("gitlab");
  EXPECT_THAT(format->Open(kGroup), MatchesRegex("\x1b\\[0Ksection_start:[0-9]+:hearthmake_project_7"
                                                 "\\[collapsed=true\\]\r\x1b\\[0KLib\n"));
  EXPECT_THAT(format->Close(kGroup),
              MatchesRegex("\x1b\\[0Ksection_end:[0-9]+:hearthmake_project_7\r\x1b\\[0K\n"));
  EXPECT_EQ(format->Problem(kProblem, "src/a.cls"), "");
}

TEST(TeamCityFormat, WritesServiceMessages) {
  const auto format = MakeAnnotationFormat("teamcity");
  EXPECT_EQ(format->Open(kGroup), "##teamcity[compilationStarted compiler='Lib']\n");
  EXPECT_EQ(format->Close(kGroup), "##teamcity[compilationFinished compiler='Lib']\n");
  EXPECT_EQ(format->ProblemInside(kProblem),
            "##teamcity[message text='Variable not defined' status='ERROR']\n");
  const std::string first = format->Problem(kProblem, "src/a.cls");
  EXPECT_THAT(first, HasSubstr("##teamcity[inspectionType id='hearthmake.compile' "));
  EXPECT_THAT(first, HasSubstr("##teamcity[inspection typeId='hearthmake.compile' message='Variable not "
                               "defined' file='src/a.cls' line='12' SEVERITY='ERROR']\n"));
  EXPECT_THAT(first,
              EndsWith("##teamcity[buildProblem description='Lib: Variable not defined (src/a.cls:12)']\n"));
  EXPECT_THAT(format->Problem(kProblem, "src/a.cls"), Not(HasSubstr("inspectionType")));
  EXPECT_EQ(format->Problem({"", 0, "No disk", "", false}, ""),
            "##teamcity[buildProblem description='No disk']\n");
}

TEST(TeamCityFormat, EscapesByTheRulesOfTheServer) {
  EXPECT_EQ(MakeAnnotationFormat("teamcity")->ProblemInside(kHard),
            "##teamcity[message text='100%|r|n::error:: |||'|[x|]|' Gr|0x00F6|0x00DFe |0xD83D|0xDE00' "
            "status='ERROR']\n");
}

TEST(TeamCityFormat, KeepsDescriptionsToTheLengthThatTheServerTakes) {
  const std::string line =
      MakeAnnotationFormat("teamcity")->Problem({"", 0, std::string(9000, 'x'), "", false}, "");
  EXPECT_LT(line.size(), 4100U);
}

}  // namespace
}  // namespace hearthmake::host
