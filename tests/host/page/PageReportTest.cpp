#include "host/page/PageReport.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "support/HostCommand.hpp"

namespace hearthmake::host {
namespace {

using nlohmann::json;
using support::CommandResult;
using support::HostCommand;
using testing::HasSubstr;
using testing::Not;

// The pages of runs of the real command.
class PageReportTest : public testing::Test {
 protected:
  PageReportTest() { command.MakeShop(); }

  CommandResult Build() { return command.Run({"build", "Shop", "--html", command.root.Path("run.html")}); }
  std::string Page() const { return command.root.Content("run.html"); }

  HostCommand command;
};

TEST_F(PageReportTest, WritesAPageOfARunThatCompletes) {
  const CommandResult result = Build();
  ASSERT_EQ(result.status, 0) << result.err;
  const std::string page = Page();
  EXPECT_THAT(page, HasSubstr("<title>Shop: Complete"));
  EXPECT_THAT(page, HasSubstr("This is the first run on record"));
  EXPECT_THAT(page, HasSubstr("Build of &#39;Lib&#39; succeeded."));
  EXPECT_THAT(page, HasSubstr("<td>not there</td>"));  // Lib's binary before
  const json run = json::parse(command.root.Content("data/LastRun-1.json"));
  ASSERT_EQ(run.at("projects").size(), 3U);
  EXPECT_EQ(run.at("projects")[0].at("name"), "Lib");
  EXPECT_EQ(run.at("projects")[0].at("outcome"), "compiled");
  EXPECT_GT(run.at("projects")[0].at("size"), 0);
  EXPECT_NE(run.at("projects")[0].at("library"), "");
}

TEST_F(PageReportTest, ShowsTheSourceLineOfAnErrorAndWhatIsNewlyFailing) {
  ASSERT_EQ(Build().status, 0);
  std::string source;
  for (int i = 1; i < 20; ++i) source += "' line " + std::to_string(i) + " \xe9</script>\r\n";
  command.root.MakeFile("src/App.cls", source);
  command.FailOn("App");
  EXPECT_EQ(Build().status, 1);
  const std::string page = Page();
  EXPECT_THAT(page, HasSubstr("<title>Shop: Failed"));
  EXPECT_THAT(page, HasSubstr("Variable not defined"));
  EXPECT_THAT(page, HasSubstr("<mark><i>12</i>&#39; line 12 \xC3\xA9&lt;/script&gt;\n</mark>"));
  EXPECT_THAT(page, HasSubstr("Newly failing <span>1</span>"));
  EXPECT_THAT(page, HasSubstr("Not reached"));
  command.BehaveWell();
  ASSERT_EQ(Build().status, 0);
  EXPECT_THAT(Page(), HasSubstr("Fixed <span>1</span>"));
}

TEST_F(PageReportTest, WritesAPageOfARunThatIsCancelled) {
  command.SleepOn("App");
  const pid_t run = command.Start({"build", "Shop", "--html", command.root.Path("run.html")});
  ASSERT_GT(command.WaitForSleeper(), 0);
  kill(run, SIGINT);
  EXPECT_EQ(command.Finish(run).status, 3);
  EXPECT_THAT(Page(), HasSubstr("<title>Shop: Cancelled"));
}

TEST_F(PageReportTest, ShowsTheCycleThatKeepsARunFromBeginning) {
  command.WriteProject("Ring", "OleDll", "Reference=*\\ALoop.vbp\r\n");
  command.WriteProject("Loop", "OleDll", "Reference=*\\AKnot.vbp\r\n");
  command.WriteProject("Knot", "OleDll", "Reference=*\\ARing.vbp\r\n");
  ASSERT_EQ(command
                .Run({"add", "Shop", command.Source("Ring.vbp"), command.Source("Loop.vbp"),
                      command.Source("Knot.vbp")})
                .status,
            0);
  EXPECT_EQ(Build().status, 1);
  EXPECT_THAT(Page(), HasSubstr("The red lines form a cycle."));
  EXPECT_THAT(Page(), HasSubstr("The run itself"));
}

TEST_F(PageReportTest, RemembersNothingWithoutAPage) {
  ASSERT_EQ(command.Run({"build", "Shop"}).status, 0);
  EXPECT_FALSE(std::filesystem::exists(command.Data() + "/LastRun-1.json"));
}

TEST_F(PageReportTest, TakesADamagedMemoryForNone) {
  ASSERT_EQ(Build().status, 0);
  command.root.MakeFile("data/LastRun-1.json", "{\"format\":1,");
  ASSERT_EQ(Build().status, 0);
  EXPECT_THAT(Page(), HasSubstr("This is the first run on record"));
}

TEST_F(PageReportTest, RefusesAPlaceThatIsNoneBeforeItCompiles) {
  const CommandResult result =
      command.Run({"build", "Shop", "--html", command.root.Path("missing/run.html")});
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(result.err, HasSubstr("--html"));
  EXPECT_TRUE(command.Compiled().empty());
}

TEST_F(PageReportTest, ColoursWhatFailedInThePictureOfTheBuild) {
  command.FailOn("App");
  ASSERT_EQ(Build().status, 1);
  const std::string text = command.Run({"graph", "Shop"}).out;
  EXPECT_THAT(text, HasSubstr("\"App\" [label=\"App\", shape=box, fillcolor=\"#f4a9a0\""));
  EXPECT_THAT(text, Not(HasSubstr("\"Lib\" [label=\"Lib\", shape=ellipse, fillcolor=\"#f4a9a0\"")));
}

}  // namespace
}  // namespace hearthmake::host
