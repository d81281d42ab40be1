#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/page/RunPage.hpp"
#include "support/PageBrowser.hpp"
#include "support/RunPageScene.hpp"

namespace hearthmake::host {
namespace {

using support::MakeRunPage;
using support::PageBrowser;
using testing::HasSubstr;
using testing::Not;

// The page of a run in a real browser.
class RunPageBrowserTest : public testing::Test {
 protected:
  void SetUp() override {
    if (!PageBrowser::Program()) GTEST_SKIP() << "Chromium is not installed (scripts/setup --tests).";
  }

  PageBrowser browser;
};

std::size_t CountOf(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
  return count;
}

// The other tests rely on it.
TEST_F(RunPageBrowserTest, HearsWhatScriptsDoWrong) {
  const auto visit = browser.Open("<!DOCTYPE html><body></body>", "nothing.atAll();");
  ASSERT_EQ(visit.status, 0);
  EXPECT_THAT(visit.console, HasSubstr("nothing is not defined"));
}

TEST_F(RunPageBrowserTest, ShowsTwoHundredProjectsWithoutAComplaint) {
  const auto visit = browser.Open(RunPageText(MakeRunPage(200)));
  ASSERT_EQ(visit.status, 0);
  EXPECT_EQ(visit.console, "");
  EXPECT_EQ(CountOf(visit.dom, "<tr data-p="), 200U);
  EXPECT_EQ(CountOf(visit.dom, "class=\"body\" id=\"p"), 200U);
  EXPECT_THAT(visit.dom, HasSubstr("class=\"js\""));
}

// Written by the page's own elements: which rows are first, shown and chosen after somebody used them.
constexpr const char* kUse = R"(
const told = document.body.dataset;
const rows = () => [...document.querySelectorAll('#list tbody tr')];
const shown = () => rows().filter((row) => row.getClientRects().length).length;
const head = (column) => document.querySelectorAll('#list thead button')[column].click();
head(5); told.largest = rows()[0].dataset.p;
head(5); told.smallest = rows()[0].dataset.p;
head(1); told.byName = rows().slice(0, 3).map((row) => row.dataset.p).join();
const find = document.querySelector('#find');
find.value = 'PROJECT19'; find.dispatchEvent(new Event('input'));
told.found = shown();
find.value = ''; find.dispatchEvent(new Event('input'));
document.querySelector('input[value=failed]').click();
told.failed = shown(); told.count = document.querySelector('.count').textContent;
document.querySelector('input[value=""]').click();
document.querySelector('#drawing a[data-p="9"]').dispatchEvent(new MouseEvent('click', {bubbles: true, cancelable: true}));
told.address = location.hash;
told.sheet = getComputedStyle(document.querySelector('#details')).position;
told.open = [...document.querySelectorAll('#details details')].filter((d) => d.getClientRects().length).map((d) => d.querySelector('.body').id).join();
told.near = document.querySelectorAll('#drawing .nodes .near').length > 1;
dispatchEvent(new KeyboardEvent('keydown', {key: 'Escape'}));
told.closed = getComputedStyle(document.querySelector('#details')).display;
told.folded = !document.querySelector('#p9').closest('details').open;
const scheme = document.querySelector('#scheme');
const ground = () => getComputedStyle(document.body).backgroundColor + ' ' + scheme.textContent.trim();
const system = ground();
scheme.click(); told.light = ground();
scheme.click(); told.dark = ground();
scheme.click(); told.system = system === ground();
const width = document.querySelector('#drawing').getBoundingClientRect().width;
document.querySelector('[data-zoom=in]').click();
told.grown = document.querySelector('#drawing').getBoundingClientRect().width > width;
)";

TEST_F(RunPageBrowserTest, SortsFiltersAndChooses) {
  const auto visit = browser.Open(RunPageText(MakeRunPage(200)), kUse);
  ASSERT_EQ(visit.status, 0);
  EXPECT_EQ(visit.console, "");
  for (const char* told :
       {"data-largest=\"200\"", "data-smallest=\"1\"", "data-by-name=\"1,2,3\"", "data-found=\"11\"",
        "data-failed=\"25\"", "data-count=\"25 of 200 shown\"", "data-address=\"#p9\"",
        "data-sheet=\"fixed\"", "data-open=\"p9\"", "data-near=\"true\"", "data-closed=\"none\"",
        "data-folded=\"true\"", "data-light=\"rgb(244, 246, 248) Colours: light\"",
        "data-dark=\"rgb(15, 19, 24) Colours: dark\"", "data-system=\"true\"", "data-grown=\"true\""}) {
    EXPECT_THAT(visit.dom, HasSubstr(told));
  }
}

// A jump to a project shows it: the browser opens what the place stands in.
TEST_F(RunPageBrowserTest, OpensAProjectWithoutItsScript) {
  std::string text = RunPageText(MakeRunPage(20));
  const std::size_t script = text.rfind("<script>");
  text.erase(script, text.rfind("</script>") - script);
  const auto visit = browser.Open(text,
                                  "const project = document.querySelector('#p9').closest('details');"
                                  "document.body.dataset.before = project.open; location.hash = '#p9';"
                                  "setTimeout(() => { document.body.dataset.after = project.open; }, 100);");
  EXPECT_THAT(visit.dom, Not(HasSubstr("class=\"js\"")));
  EXPECT_THAT(visit.dom, HasSubstr("data-before=\"false\""));
  EXPECT_THAT(visit.dom, HasSubstr("data-after=\"true\""));
}

// What is for paper, shown on the screen, while a reader has dark colours and a project before him.
constexpr const char* kPrint = R"(
const told = document.body.dataset;
const scheme = document.querySelector('#scheme');
scheme.click(); scheme.click();
location.hash = '#p2'; dispatchEvent(new Event('hashchange'));
location.hash = '#p9'; dispatchEvent(new Event('hashchange'));
for (const rule of document.styleSheets[0].cssRules)
  if (rule.media?.mediaText === 'print') rule.media.mediaText = 'all';
const style = (selector) => getComputedStyle(document.querySelector(selector));
told.ground = style('body').backgroundColor; told.ink = style('body').color;
told.navigation = style('nav').display;
told.sheet = [style('#details').position, style('#details').opacity, style('#details').overflow].join();
told.full = [...document.querySelectorAll('#details .body')].filter((body) => body.getClientRects().length).map((body) => body.id).join();
told.fits = document.documentElement.scrollWidth <= innerWidth;
)";

TEST_F(RunPageBrowserTest, TellsOnPaperOfWhatFailedAndOfWhatIsChosenInFull) {
  RunPage page = MakeRunPage(20);
  for (PageProject& project : page.projects) project.record.outcome = ProjectOutcome::Compiled;
  page.projects[4].record.outcome = ProjectOutcome::Failed;
  const auto visit = browser.Open(RunPageText(page), kPrint);
  EXPECT_EQ(visit.console, "");
  for (const char* told :
       {"data-ground=\"rgb(255, 255, 255)\"", "data-ink=\"rgb(0, 0, 0)\"", "data-navigation=\"none\"",
        "data-sheet=\"static,1,visible\"", "data-full=\"p5,p9\"", "data-fits=\"true\""}) {
    EXPECT_THAT(visit.dom, HasSubstr(told));
  }
}

TEST_F(RunPageBrowserTest, FitsNarrowWindows) {
  const auto visit = browser.Open(
      RunPageText(MakeRunPage(40)),
      "document.body.dataset.fits = document.documentElement.scrollWidth <= innerWidth && innerWidth < 700;",
      500);
  EXPECT_EQ(visit.console, "");
  EXPECT_THAT(visit.dom, HasSubstr("data-fits=\"true\""));
}

TEST_F(RunPageBrowserTest, RunsNothingThatProjectsHoldInTheirTexts) {
  RunPage page = MakeRunPage(8);
  for (PageProject& project : page.projects) {
    project.record.name = project.record.log = project.record.reason = support::kNastyText;
    project.errors = {{{support::kNastyText, 1, support::kNastyText}, {{{1, support::kNastyText}}}}};
  }
  const auto visit = browser.Open(RunPageText(page));
  ASSERT_EQ(visit.status, 0);
  EXPECT_EQ(visit.console, "");
  EXPECT_THAT(visit.dom, Not(HasSubstr("data-broken")));
  EXPECT_EQ(CountOf(visit.dom, "<tr data-p="), 8U);
}

}  // namespace
}  // namespace hearthmake::host
