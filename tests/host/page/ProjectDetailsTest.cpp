#include "host/page/ProjectDetails.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/RunPageScene.hpp"

namespace hearthmake::host {
namespace {

using testing::HasSubstr;
using testing::Not;

TEST(ProjectDetails, ShowsShortLogsWhole) { EXPECT_EQ(LogText("a < b\r\n", 100), "a &lt; b\n"); }

TEST(ProjectDetails, CutsLongLogsInTheMiddle) {
  const std::string log = "FIRST " + std::string(100'000, 'x') + " LAST";
  const std::string text = LogText(log, 4096);
  EXPECT_LT(text.size(), 5000U);
  EXPECT_THAT(text, HasSubstr("FIRST xxx"));
  EXPECT_THAT(text, HasSubstr("xxx LAST"));
  EXPECT_THAT(text, HasSubstr("93.7 KB left out here"));
}

TEST(ProjectDetails, CutsNoCharacterInTwo) {
  std::string log;
  while (log.size() < 20'000) log += "€";
  for (std::size_t most = 4096; most < 4104; ++most)
    EXPECT_THAT(LogText(log, most), Not(HasSubstr("\uFFFD")));
}

TEST(ProjectDetails, ShowsAnErrorWithItsSourceLines) {
  const RunPage page = support::MakeRunPage(3);
  const std::string text = FailureText(page.projects[2]);
  EXPECT_THAT(text, HasSubstr("Variable not defined"));
  EXPECT_THAT(text, HasSubstr("C:\\src\\Shelf.cls, line 12"));
  EXPECT_THAT(text, HasSubstr("<mark><i>12</i>  m_Cont = 1\n</mark>"));
  EXPECT_EQ(FailureText(page.projects[1]), "");
}

TEST(ProjectDetails, ShowsTheMessageOfAFailureThatNamesNoLine) {
  PageProject project;
  project.record.outcome = ProjectOutcome::Failed;
  project.record.message = "The path to the binary component does not exist!";
  project.advice = "Make it with: mkdir -p 'bin'";
  EXPECT_THAT(FailureText(project), HasSubstr("The path to the binary component does not exist!"));
  EXPECT_THAT(FailureText(project), HasSubstr("Make it with: mkdir -p &#39;bin&#39;"));
}

TEST(ProjectDetails, TellsWhatDiffersBeforeAndAfter) {
  RunPage page = support::MakeRunPage(2);
  page.projects[1].facts.after.library = "{NEW}";
  const std::string text = DetailsSection(page);
  EXPECT_THAT(text, HasSubstr("<td>1.0.1</td><td>1.0.2</td>"));
  EXPECT_THAT(text, HasSubstr("<td>{11111111-1111-1111-1111-111111111111}</td><td>{NEW}</td>"));
  EXPECT_THAT(text, HasSubstr("Needs <span>1</span>"));
  EXPECT_THAT(text, HasSubstr("Needed by <span>1</span>"));
}

}  // namespace
}  // namespace hearthmake::host
