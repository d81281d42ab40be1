#include "host/page/RunPage.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/RunPageScene.hpp"

namespace hearthmake::host {
namespace {

using support::kNastyText;
using support::MakeRunPage;
using testing::HasSubstr;
using testing::Not;

std::size_t CountOf(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
  return count;
}

TEST(RunPage, HasARowADetailAndANodeForEachProject) {
  const std::string text = RunPageText(MakeRunPage(40));
  EXPECT_EQ(CountOf(text, "<tr data-p="), 40U);
  EXPECT_EQ(CountOf(text, "class=\"body\" id=\"p"), 40U);
  EXPECT_EQ(CountOf(text, "class=\"edge\""), 40U);
  EXPECT_EQ(CountOf(text, "<li data-p="), 10U);  // those that compiled or failed
}

TEST(RunPage, TellsTheResultInItsTitle) {
  RunPage page = MakeRunPage(1);
  EXPECT_THAT(RunPageText(page), HasSubstr("<title>Suite: Failed – 2001-09-09 01:46 UTC</title>"));
  page.result = RunResult::Complete;
  EXPECT_THAT(RunPageText(page), HasSubstr("<title>Suite: Complete"));
}

TEST(RunPage, LoadsNothingFromElsewhere) {
  const std::string text = RunPageText(MakeRunPage(20));
  EXPECT_THAT(text, HasSubstr("default-src 'none'"));
  for (const char* part : {"http://", "https://", "src=", "@import", "url(http"})
    EXPECT_THAT(text, Not(HasSubstr(part))) << part;
}

TEST(RunPage, EscapesEverythingThatComesFromProjects) {
  RunPage page = MakeRunPage(8);
  page.buildName = kNastyText;
  page.failures = {kNastyText};
  page.messages = {{RunMessage::Kind::Error, kNastyText, 0.1, 0}};
  page.gone = {kNastyText};
  for (PageProject& project : page.projects) {
    project.record.name = project.record.reason = project.record.log = kNastyText;
    project.path = kNastyText;
    project.facts.before = {kNastyText, 1, kNastyText, kNastyText};
    project.facts.after = {kNastyText + "2", 2, kNastyText + "2", kNastyText + "2"};
    project.change->hasNewLibrary = project.change->hasNewVersion = true;
    project.change->hasNewLibraryVersion = true;
    project.change->last.facts = project.facts.before;
    project.errors = {{{kNastyText, 1, kNastyText}, {{{1, kNastyText}}}}};
  }
  page.projects[1].errors.clear();
  page.projects[1].record.outcome = ProjectOutcome::Failed;
  page.projects[1].record.message = kNastyText;
  const std::string text = RunPageText(page);
  EXPECT_EQ(CountOf(text, "<script>"), 1U);
  EXPECT_EQ(CountOf(text, "</script>"), 1U);
  EXPECT_EQ(CountOf(text, "<img"), 0U);
  EXPECT_EQ(CountOf(text, "\x1b"), 0U);
  EXPECT_EQ(CountOf(text, "\xff"), 0U);
  EXPECT_GT(CountOf(text, "&lt;/script&gt;"), 30U);
}

TEST(RunPage, ComparesWithTheLastRun) {
  RunPage page = MakeRunPage(4);
  page.projects[1].change->kind = ProjectChange::Kind::Fixed;
  page.projects[2].change->kind = ProjectChange::Kind::NewlyFailing;
  page.projects[3].change->hasNewLibrary = true;
  page.gone = {"Old"};
  const std::string text = RunPageText(page);
  EXPECT_THAT(text, HasSubstr("Fixed <span>1</span></h3><ul><li><a href=\"#p2\">Project1</a>"));
  EXPECT_THAT(text, HasSubstr("Newly failing <span>1</span></h3><ul><li><a href=\"#p3\">Project2</a>"));
  EXPECT_THAT(text, HasSubstr("New identities <span>1</span></h3><ul><li><a href=\"#p4\">Project3</a>"));
  EXPECT_THAT(text, HasSubstr("No longer in the build <span>1</span></h3><ul><li>Old</li>"));
  page.lastBegan.reset();
  for (PageProject& project : page.projects) project.change.reset();
  EXPECT_THAT(RunPageText(page), HasSubstr("This is the first run on record"));
}

TEST(RunPage, NamesTheLargestChangesFirst) {
  const std::string text = RunPageText(MakeRunPage(30));
  EXPECT_THAT(text, HasSubstr("New sizes <span>29</span></h3><ul><li><a href=\"#p30\">"));
  EXPECT_THAT(text, HasSubstr("<li>and 17 more</li>"));
}

TEST(RunPage, ShowsACycleOfReferences) {
  RunPage page = MakeRunPage(3);
  page.references = Digraph({{1}, {0}, {0}});
  const std::string text = RunPageText(page);
  EXPECT_EQ(CountOf(text, "class=\"cycle\" d="), 2U);
  EXPECT_THAT(text, HasSubstr("The red lines form a cycle."));
}

TEST(RunPage, IsAPageAlsoOfABuildWithoutProjects) {
  RunPage page;
  page.buildName = "Empty";
  EXPECT_THAT(RunPageText(page), HasSubstr("</html>"));
}

TEST(RunPage, StaysSmall) {
  RunPage page = MakeRunPage(200);
  for (PageProject& project : page.projects) project.record.log = std::string(200'000, '<');
  EXPECT_LT(RunPageText(MakeRunPage(200)).size(), std::size_t{2} * 1000 * 1000);
  // Each of these letters needs four in a page.
  EXPECT_LT(RunPageText(page).size(), std::size_t{4} * 1000 * 1000);
}

}  // namespace
}  // namespace hearthmake::host
