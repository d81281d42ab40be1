#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "support/HostCommand.hpp"

// deploy and catalog, and what a build does to component services.

namespace hearthmake::host {
namespace {

using nlohmann::json;
using support::CommandResult;
using support::HostCommand;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

class DeployCommandTest : public testing::Test {
 protected:
  // Lib is in package Orders; its binary has the one class Shapes.Circle.
  DeployCommandTest() {
    command.MakeShop();
    command.Run({"packages", "Shop", "add", "Orders"});
    command.Run({"packages", "Shop", "assign", "Orders", "Lib"});
    PutBinary("Lib.dll");
  }
  void PutBinary(const std::string& name) const {
    std::filesystem::copy_file(SOURCE_DIRECTORY "/tests/adapters/typelib/data/Shapes.tlb",
                               command.Source(name), std::filesystem::copy_options::overwrite_existing);
  }
  CommandResult Edit(HostCommand::Arguments words) {
    words.insert(words.begin(), {"packages", "Shop", "edit", "Orders"});
    return command.Run(words);
  }
  CommandResult Deploy(HostCommand::Arguments words = {}) {
    words.insert(words.begin(), {"deploy", "Shop"});
    return command.Run(words);
  }
  CommandResult Compare() { return command.Run({"catalog", "Shop"}); }
  json Installed(const HostCommand::Arguments& words = {}) {
    HostCommand::Arguments all = {"catalog", "--json"};
    all.insert(all.end(), words.begin(), words.end());
    return json::parse(command.Run(all).out);
  }
  std::string Dll() const {
    std::string path = command.Source("Lib.dll");
    std::replace(path.begin(), path.end(), '/', '\\');
    return "Z:" + path;
  }

  HostCommand command;
};

TEST_F(DeployCommandTest, InstallsTheBinariesOfThePackagesProjects) {
  const CommandResult result = Deploy();
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_THAT(support::LinesOf(result.out), ElementsAre("Adding COM+ Application: Orders",
                                                        "Adding component Lib to COM+ Application Orders",
                                                        HasSubstr("Shop: 1 application deployed")));
  const json installed = Installed();
  ASSERT_EQ(installed.size(), 1U);
  EXPECT_EQ(installed[0]["properties"]["ImpersonationLevel"], 3);
  EXPECT_EQ(installed[0]["properties"]["Identity"], "Interactive User");
  EXPECT_EQ(installed[0]["components"][0]["dll"], Dll());
  EXPECT_EQ(installed[0]["components"][0]["classes"][0]["progId"], "Shapes.Circle");
  EXPECT_EQ(Installed({"--mts"}), json::array());
}

TEST_F(DeployCommandTest, KeepsAnApplicationAndRefreshesIt) {
  Deploy();
  const std::string key = Installed()[0]["key"];
  Edit({"--Description", "new"});
  const CommandResult result = Deploy();
  EXPECT_THAT(result.out, HasSubstr("Refreshing  COM+ Application Orders"));
  EXPECT_EQ(Installed()[0]["key"], key);
  EXPECT_EQ(Installed()[0]["properties"]["Description"], "new");
  Edit({"--CreateNew", "true"});
  EXPECT_THAT(Deploy().out, HasSubstr("Removing COM+ Application: Orders"));
  EXPECT_NE(Installed()[0]["key"], key);
}

TEST_F(DeployCommandTest, RebuildsMtsPackagesEachTime) {
  EXPECT_THAT(Deploy({"--mts"}).out, HasSubstr("Adding component Lib to Package Orders"));
  const std::string key = Installed({"--mts"})[0]["key"];
  EXPECT_THAT(Deploy({"--mts"}).out,
              AllOf(HasSubstr("Removing Package: Orders"), HasSubstr("1 package deployed")));
  EXPECT_EQ(Installed({"--mts"}).size(), 1U);
  EXPECT_NE(Installed({"--mts"})[0]["key"], key);
  EXPECT_EQ(Installed(), json::array());
}

TEST_F(DeployCommandTest, DeploysTheNamedPackagesOnly) {
  command.Run({"packages", "Shop", "add", "Stock"});
  EXPECT_THAT(Deploy({"stock"}).out, HasSubstr("1 application deployed"));
  EXPECT_EQ(Installed()[0]["name"], "Stock");
  EXPECT_EQ(Installed().size(), 1U);
  EXPECT_EQ(Deploy({"Nope"}).status, 2);
}

TEST_F(DeployCommandTest, PrintsEventsAsJson) {
  Edit({"--ExportPath", command.root.Path("Orders.json")});
  std::vector<std::string> events;
  for (const std::string& line : support::LinesOf(Deploy({"--json"}).out)) {
    const json event = json::parse(line);
    EXPECT_TRUE(event.contains("time"));
    events.push_back(event["event"].get<std::string>() +
                     (event.contains("info") ? ": " + event["info"].get<std::string>() : ""));
  }
  EXPECT_THAT(events, ElementsAre("DeployStart", "MTSEvent: Adding COM+ Application: Orders",
                                  "MTSEvent: Adding component Lib to COM+ Application Orders",
                                  "MTSEvent: Exporting COM+ Application: Orders", "DeployComplete"));
  EXPECT_THAT(command.root.Content("Orders.json"), HasSubstr("Shapes.Circle"));
}

TEST_F(DeployCommandTest, FailsWithTheBinaryThatIsMissing) {
  std::filesystem::remove(command.Source("Lib.dll"));
  const CommandResult result = Deploy();
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.err,
              AllOf(HasSubstr("FAILED: File not found: " + Dll()), HasSubstr("Deployment failed: Shop")));
  const auto lines = support::LinesOf(Deploy({"--mts", "--json"}).out);
  EXPECT_EQ(json::parse(lines.back())["event"], "DeployFailed");
  EXPECT_EQ(json::parse(lines[lines.size() - 2])["error"], true);
}

TEST_F(DeployCommandTest, RefusesABuildWithoutPackages) {
  command.Run({"new", "Empty"});
  const CommandResult result = command.Run({"deploy", "Empty"});
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(result.err, HasSubstr("hearthmake packages 'Empty' add NAME"));
}

TEST_F(DeployCommandTest, NeverPrintsOrStoresAPasswordInTheCatalog) {
  command.standardInput = command.root.MakeFile("input", "s3cret\n");
  Edit({"--User", "me", "--password-stdin", "--ExportPath", command.root.Path("Orders.json")});
  for (const HostCommand::Arguments& kind : {HostCommand::Arguments{}, {"--mts"}, {"--json"}})
    EXPECT_THAT(Deploy(kind).out, Not(HasSubstr("s3cret")));
  EXPECT_THAT(command.root.Content("data/catalog.json"), Not(HasSubstr("s3cret")));
  EXPECT_THAT(command.root.Content("Orders.json"), Not(HasSubstr("s3cret")));
  EXPECT_THAT(command.Run({"catalog"}).out, AllOf(HasSubstr("(set)"), Not(HasSubstr("s3cret"))));
  EXPECT_EQ(Installed()[0]["properties"]["Password"], "(set)");
}

TEST_F(DeployCommandTest, RunsTheScriptAfterwards) {
  command.Run({"settings", "RunScripts", "true"});
  command.Run({"scripts", "Shop", "AfterMTSpackage", "--set",
               command.root.MakeFile("a.vbs", "Scripts.Notify \"deployed \" & Build.Name\r\n")});
  EXPECT_THAT(Deploy().out, HasSubstr("deployed Shop\n"));
}

TEST_F(DeployCommandTest, WritesTheReport) {
  command.Run({"settings", "CreateReport", "true"});
  command.Run({"settings", "BuildReport", command.root.Path()});
  Deploy();
  EXPECT_THAT(command.root.Content("BUILD_Shop.log"),
              AllOf(HasSubstr("[Createing COM+ Applications]\r\n"), HasSubstr("completed")));
}

// --- protection ---

TEST_F(DeployCommandTest, FailsAtAProtectedPackageUntilItIsUnprotected) {
  Edit({"--DisableDelete", "true"});
  EXPECT_EQ(Deploy({"--mts"}).status, 0);
  const CommandResult again = Deploy({"--mts"});
  EXPECT_EQ(again.status, 1);
  EXPECT_THAT(again.err, HasSubstr("protected against deletion"));
  EXPECT_EQ(command.Run({"catalog", "--mts", "--unprotect", "Orders"}).status, 0);
  EXPECT_EQ(Deploy({"--mts"}).status, 0);
  EXPECT_EQ(command.Run({"catalog", "--mts", "--remove", "Orders"}).status, 0);
  EXPECT_EQ(Installed({"--mts"}), json::array());
}

TEST_F(DeployCommandTest, RepeatsTheDeploymentOfAnApplicationThatMayNotBeChanged) {
  Edit({"--DisableChanges", "true"});
  EXPECT_EQ(Deploy().status, 0);
  EXPECT_EQ(Installed()[0]["components"].size(), 1U);
  EXPECT_EQ(Deploy().status, 0);  // nothing changes
  Edit({"--Description", "new"});
  EXPECT_THAT(Deploy().err, HasSubstr("protected against changes"));
  Edit({"--DisableChanges", "false"});
  EXPECT_EQ(Deploy().status, 0);
  EXPECT_EQ(Installed()[0]["properties"]["Description"], "new");
}

// --- catalog ---

TEST_F(DeployCommandTest, CatalogShowsWhatIsInstalled) {
  EXPECT_EQ(command.Run({"catalog"}).out, "No application is installed.\n");
  EXPECT_EQ(command.Run({"catalog", "--mts"}).out, "No package is installed.\n");
  Deploy();
  EXPECT_THAT(command.Run({"catalog"}).out,
              AllOf(HasSubstr("Orders  {"), HasSubstr("  ShutdownAfter                    3\n"),
                    HasSubstr("  component " + Dll() + "\n    Shapes.Circle ")));
}

TEST_F(DeployCommandTest, CatalogFindsNoDifferenceAfterADeployment) {
  Deploy();
  const CommandResult result = Compare();
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(result.out, "The catalog is as Shop has it.\n");
  EXPECT_EQ(command.Run({"catalog", "Shop", "--json"}).out, "[]\n");
}

TEST_F(DeployCommandTest, CatalogTellsOfAPackageThatIsMissing) {
  const CommandResult result = Compare();
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.out, "Orders: the application is missing\n");
  EXPECT_EQ(command.Run({"catalog", "Shop", "--mts"}).out, "Orders: the package is missing\n");
  EXPECT_FALSE(std::filesystem::exists(command.root.Path("data/catalog.json")));
}

TEST_F(DeployCommandTest, CatalogTellsOfPropertiesThatDiffer) {
  Deploy();
  command.standardInput = command.root.MakeFile("input", "s3cret\n");
  Edit({"--Shutdowntime", "9", "--User", "me", "--password-stdin"});
  EXPECT_EQ(Compare().out,
            "Orders: ShutdownAfter is '3', the build has '9'\n"
            "Orders: Identity is 'Interactive User', the build has 'me'\n"
            "Orders: Password is '', the build has '(set)'\n");
}

TEST_F(DeployCommandTest, CatalogTellsOfComponentsMissingAndExtra) {
  command.WriteProject("More", "OleDll");
  command.Run({"add", "Shop", command.Source("More.vbp")});
  PutBinary("More.dll");
  Deploy();
  command.Run({"packages", "Shop", "assign", "Orders", "More"});
  command.Run({"packages", "Shop", "assign", "--none", "Lib"});
  const json differences = json::parse(command.Run({"catalog", "Shop", "--json"}).out);
  ASSERT_EQ(differences.size(), 2U);
  EXPECT_EQ(differences[0]["kind"], "component missing");
  EXPECT_THAT(differences[0]["what"].get<std::string>(), HasSubstr("More.dll"));
  EXPECT_EQ(differences[1]["kind"], "component extra");
  EXPECT_EQ(differences[1]["what"], Dll());
}

TEST_F(DeployCommandTest, CatalogTellsOfClassesThatDiffer) {
  Deploy();
  std::string text = command.root.Content("data/catalog.json");
  const std::size_t place = text.find("Shapes.Circle");
  command.root.MakeFile("data/catalog.json", text.replace(place, 13, "Shapes.Square"));
  EXPECT_THAT(Compare().out,
              AllOf(HasSubstr("Orders: classes of " + Dll() + " differ\n"),
                    HasSubstr("installed: Shapes.Square {"), HasSubstr("binary:    Shapes.Circle {")));
}

TEST_F(DeployCommandTest, CatalogSaysWhatItCanNotCompare) {
  Deploy();
  std::filesystem::remove(command.Source("Lib.dll"));
  const CommandResult result = Compare();
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.out, "Orders: can't be compared. Error occured: File not found: " + Dll() + "\n");
}

TEST_F(DeployCommandTest, ComparingExportsAndChangesNothing) {
  Edit({"--ExportPath", command.root.Path("Orders.json")});
  Deploy();
  std::filesystem::remove(command.root.Path("Orders.json"));
  const std::string before = command.root.Content("data/catalog.json");
  EXPECT_EQ(Compare().status, 0);
  EXPECT_FALSE(std::filesystem::exists(command.root.Path("Orders.json")));
  EXPECT_EQ(command.root.Content("data/catalog.json"), before);
  EXPECT_EQ(
      json::parse(command.Run({"packages", "Shop", "show", "Orders", "--json"}).out)["ExportPath"],
      "Z:" + [&] {
        std::string path = command.root.Path("Orders.json");
        std::replace(path.begin(), path.end(), '/', '\\');
        return path;
      }());
}

TEST_F(DeployCommandTest, TellsOfADamagedCatalogAndLeavesIt) {
  command.root.MakeFile("data/catalog.json", "{\n\"format\": 7\n}\n");
  EXPECT_EQ(Deploy().status, 1);
  const CommandResult result = command.Run({"catalog"});
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(result.err, HasSubstr(command.root.Path("data/catalog.json") + ", line 1: "));
  EXPECT_EQ(command.root.Content("data/catalog.json"), "{\n\"format\": 7\n}\n");
}

TEST_F(DeployCommandTest, CatalogRefusesToChangeAndCompareAtOnce) {
  EXPECT_EQ(command.Run({"catalog", "Shop", "--remove", "Orders"}).status, 2);
  EXPECT_THAT(command.Run({"catalog", "--remove", "Nope"}).err, HasSubstr("There is no application 'Nope'"));
}

// --- what a build does to running services ---

TEST_F(DeployCommandTest, ABuildShutsApplicationsDownOnWindowsWithComPlus) {
  const CommandResult result = command.Run({"build", "Shop"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_THAT(result.out,
              AllOf(HasSubstr("Shutting down COM+ Applications\n"), Not(HasSubstr("Shutting down MTS"))));
}

// Takes the 7 seconds that MTS is given.
TEST_F(DeployCommandTest, ABuildStopsMtsOnAnOlderWindows) {
  for (const char* name : {"net", "mtxstop"}) {
    command.root.MakeFile(std::string("bin/") + name,
                          "#!/bin/sh\necho $(basename $0) \"$@\" >>'" + command.root.Path("stopped") + "'\n");
    std::filesystem::permissions(command.root.Path(std::string("bin/") + name),
                                 std::filesystem::perms::owner_all);
  }
  command.environment = {{"PATH", command.root.Path("bin") + ":/usr/bin:/bin"}};
  command.Run({"settings", "--host", "OSVersion", "4"});
  const CommandResult result = command.Run({"build", "Shop"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_THAT(result.out, AllOf(HasSubstr("Shutting down MTS\n"), Not(HasSubstr("COM+"))));
  EXPECT_EQ(command.root.Content("stopped"), "net stop server /Y\nmtxstop\nnet stop msdtc\n");
}

}  // namespace
}  // namespace hearthmake::host
