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
using testing::StartsWith;

class GraphCommandTest : public testing::Test {
 protected:
  GraphCommandTest() { command.MakeShop(); }

  HostCommand command;
};

bool HasDot() { return std::system("command -v dot >/dev/null 2>&1") == 0; }

TEST_F(GraphCommandTest, PrintsTheTextOfGraphviz) {
  const CommandResult result = command.Run({"graph", "Shop"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_THAT(result.out, StartsWith("digraph \"Shop\" {\n"));
  EXPECT_THAT(result.out, HasSubstr("\"App\" -> \"Lib\";"));
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(command.Run({"graph", "Shop"}).out, result.out);
}

TEST_F(GraphCommandTest, DrawsWhatIsNeededAndWithUsersWhoNeedsIt) {
  const std::string needed = command.Run({"graph", "Shop", "App"}).out;
  EXPECT_THAT(needed, HasSubstr("\"App\" -> \"Lib\";"));
  EXPECT_THAT(needed, Not(HasSubstr("\"Tool\"")));
  EXPECT_THAT(command.Run({"graph", "Shop", "Lib"}).out, Not(HasSubstr("\"App\"")));
  EXPECT_THAT(command.Run({"graph", "Shop", "Lib", "--users"}).out, HasSubstr("\"App\" -> \"Lib\";"));
  const CommandResult result = command.Run({"graph", "Shop", "--users"});
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(result.err, HasSubstr("--users asks who needs some projects."));
}

TEST_F(GraphCommandTest, LeavesImpliedReferencesOutUnlessTheyAreWanted) {
  command.WriteProject("Top", "Exe", "Reference=*\\AMid.vbp\r\nReference=*\\ALib.vbp\r\n");
  command.WriteProject("Mid", "OleDll", "Reference=*\\ALib.vbp\r\n");
  ASSERT_EQ(command.Run({"add", "Shop", command.Source("Mid.vbp"), command.Source("Top.vbp")}).status, 0);
  const CommandResult reduced = command.Run({"graph", "Shop"});
  EXPECT_THAT(reduced.out, Not(HasSubstr("\"Top\" -> \"Lib\"")));
  EXPECT_THAT(reduced.err, HasSubstr("1 left out that others imply"));
  EXPECT_THAT(command.Run({"graph", "Shop", "--no-reduce"}).out, HasSubstr("\"Top\" -> \"Lib\";"));
  const json graph = json::parse(command.Run({"graph", "Shop", "--json"}).out);
  EXPECT_EQ(graph.at("projects").size(), 5U);
  EXPECT_EQ(graph.at("references").size(), 4U);
  std::size_t implied = 0;
  for (const json& reference : graph.at("references")) implied += reference.at("implied") ? 1 : 0;
  EXPECT_EQ(implied, 1U);
}

TEST_F(GraphCommandTest, DrawsACycleThatHasNoCompileOrder) {
  command.WriteProject("Ring", "OleDll", "Reference=*\\ALoop.vbp\r\n");
  command.WriteProject("Loop", "OleDll", "Reference=*\\AKnot.vbp\r\n");
  command.WriteProject("Knot", "OleDll", "Reference=*\\ARing.vbp\r\n");
  ASSERT_EQ(command
                .Run({"add", "Shop", command.Source("Ring.vbp"), command.Source("Loop.vbp"),
                      command.Source("Knot.vbp")})
                .status,
            0);
  const CommandResult result = command.Run({"graph", "Shop"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_THAT(result.out, HasSubstr("\"Knot\" -> \"Ring\" [color="));
}

TEST_F(GraphCommandTest, WritesTheTextToAFile) {
  const std::string file = command.root.Path("shop.dot");
  const CommandResult result = command.Run({"graph", "Shop", "-o", file});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_THAT(result.out, HasSubstr("shop.dot: 3 projects, 1 reference.\n"));
  EXPECT_THAT(command.root.Content("shop.dot"), StartsWith("digraph \"Shop\""));
}

TEST_F(GraphCommandTest, LetsGraphvizDrawPictures) {
  if (!HasDot()) GTEST_SKIP() << "Graphviz is not installed (scripts/setup --tests).";
  const std::string folder = command.root.MakeFolder("of pictures");
  ASSERT_EQ(command.Run({"graph", "Shop", "-o", folder + "/shop.svg"}).status, 0);
  EXPECT_THAT(command.root.Content("of pictures/shop.svg"), HasSubstr("</svg>"));
  command.root.MakeFile("of pictures/shop.svg", "old");
  ASSERT_EQ(command.Run({"graph", "Shop", "-o", folder + "/shop.svg"}).status, 0);
  EXPECT_THAT(command.root.Content("of pictures/shop.svg"), HasSubstr("</svg>"));
  ASSERT_EQ(command.Run({"graph", "Shop", "--output", folder + "/shop.PNG"}).status, 0);
  EXPECT_THAT(command.root.Content("of pictures/shop.PNG"), StartsWith("\x89PNG"));
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 2);
}

TEST_F(GraphCommandTest, TellsWhatToInstallWhereDotIsMissing) {
  command.environment.emplace_back("PATH", command.root.MakeFolder("empty"));
  const CommandResult result = command.Run({"graph", "Shop", "-o", command.root.Path("shop.svg")});
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(result.err, HasSubstr("There is no program 'dot'"));
  EXPECT_THAT(result.err, HasSubstr("apt-get install graphviz"));
  EXPECT_FALSE(std::filesystem::exists(command.root.Path("shop.svg")));
}

TEST_F(GraphCommandTest, RefusesFilesOfUnknownKinds) {
  const CommandResult result = command.Run({"graph", "Shop", "-o", command.root.Path("shop.jpg")});
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(result.err, HasSubstr(".svg, .png or .pdf"));
}

}  // namespace
}  // namespace hearthmake::host
