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
  EXPECT_EQ(CountOf(visit.dom, "<details id=\"p"), 200U);
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
told.open = [...document.querySelectorAll('#details details')].filter((d) => d.getClientRects().length).map((d) => d.id).join();
told.near = document.querySelectorAll('#drawing .nodes .near').length > 1;
dispatchEvent(new KeyboardEvent('keydown', {key: 'Escape'}));
told.closed = getComputedStyle(document.querySelector('#details')).display;
const scheme = document.querySelector('#scheme');
const ground = () => getComputedStyle(document.body).backgroundColor;
scheme.click(); const light = ground(); scheme.click(); told.schemes = light !== ground();
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
        "data-schemes=\"true\"", "data-grown=\"true\""}) {
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
