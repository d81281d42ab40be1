#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "support/HostCommand.hpp"

namespace hearthmake::host {
namespace {

using nlohmann::json;
using support::CommandResult;
using support::HostCommand;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

class PackagesCommandTest : public testing::Test {
 protected:
  PackagesCommandTest() { command.MakeShop(); }

  CommandResult Packages(HostCommand::Arguments words) {
    words.insert(words.begin(), {"packages", "Shop"});
    return command.Run(words);
  }
  json Shown(const std::string& package = "Orders") {
    return json::parse(Packages({"show", package, "--json"}).out);
  }
  int PackageOf(const std::string& project) {
    return json::parse(command.Run({"show", "Shop", project, "--json"}).out)["MtsPackageId"];
  }

  HostCommand command;
};

TEST_F(PackagesCommandTest, ListsPackagesWithTheirProjects) {
  EXPECT_THAT(Packages({}).out, HasSubstr("No packages yet"));
  EXPECT_EQ(Packages({"list", "--json"}).out, "[]\n");
  Packages({"add", "Orders"});
  Packages({"add", "Stock"});
  Packages({"assign", "Orders", "Lib"});
  const CommandResult result = Packages({"list"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(result.out,
            "   1  Orders                   Lib\n"
            "   2  Stock                    (no projects)\n");
  EXPECT_EQ(json::parse(Packages({"--json"}).out)[0].dump(),
            R"({"id":1,"name":"Orders","projects":["Lib"]})");
}

TEST_F(PackagesCommandTest, AddsAPackageWithProperties) {
  const CommandResult result =
      Packages({"add", "Orders", "--Description", "The desk", "--shutdowntime", "10", "--CRMEnabled", "yes"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(result.out,
            "Added package Orders (1).\nOrders.Description = The desk\nOrders.Shutdowntime = 10\n"
            "Orders.CRMEnabled = True\n");
  EXPECT_EQ(Shown()["Shutdowntime"], 10);
  EXPECT_EQ(Shown()["CRMEnabled"], true);
}

TEST_F(PackagesCommandTest, RefusesANameThatIsTakenEmptyOrTooLong) {
  Packages({"add", "Orders"});
  EXPECT_THAT(Packages({"add", "ORDERS"}).err,
              HasSubstr("There is a package 'Orders' already, its id is 1."));
  EXPECT_THAT(Packages({"add", "  "}).err, HasSubstr("Name can't be an empty string!"));
  EXPECT_THAT(Packages({"add", std::string(51, 'x')}).err, HasSubstr("is too long"));
  Packages({"add", "Stock"});
  EXPECT_EQ(Packages({"edit", "Stock", "--Name", "orders"}).status, 2);
  EXPECT_EQ(Packages({"edit", "Stock", "--Name", "STOCK"}).out, "STOCK.Name = STOCK\n");
  EXPECT_EQ(json::parse(Packages({"--json"}).out).size(), 2U);
}

// Every property that can be set, with a value that is not its default.
TEST_F(PackagesCommandTest, EditsEveryPropertyOfBothShapes) {
  const std::vector<std::pair<std::string, std::string>> values = {{"User", "DOM\\me"},
                                                                   {"ExportPath", "C:\\x.msi"},
                                                                   {"Name", "Desk"},
                                                                   {"Description", "text"},
                                                                   {"Autentication", "Package"},
                                                                   {"LeaveRunningIdle", "True"},
                                                                   {"CreateNew", "True"},
                                                                   {"Shutdowntime", "7"},
                                                                   {"DisableDelete", "True"},
                                                                   {"DisableChanges", "True"},
                                                                   {"LibraryPackage", "True"},
                                                                   {"IsSystem", "True"},
                                                                   {"AccessChecksLevel", "1"},
                                                                   {"ApplicationAccessChecksEnabled", "True"},
                                                                   {"CRMEnabled", "True"},
                                                                   {"GigSupportEnabled", "True"},
                                                                   {"AuthenticationCapability", "64"},
                                                                   {"QueuingEnabled", "True"},
                                                                   {"QueueListenerEnabled", "True"},
                                                                   {"EventsEnabled", "True"},
                                                                   {"ImpersonationLevel", "Delegate"},
                                                                   {"CommandLine", "/x"},
                                                                   {"ApplicationProxyServerName", "host"},
                                                                   {"CRMLogFile", "C:\\crm.log"},
                                                                   {"ExportOptions", "ExportProxy"},
                                                                   {"ApplicationProxy", "True"}};
  Packages({"add", "Orders"});
  HostCommand::Arguments words = {"edit", "Orders"};
  for (const auto& [name, value] : values) words.insert(words.end(), {"--" + name, value});
  const CommandResult result = Packages(words);
  EXPECT_EQ(result.status, 0) << result.err;
  std::string expected;
  for (const auto& [name, value] : values) expected += "Desk." + name + " = " + value + "\n";
  EXPECT_THAT(support::LinesOf(result.out), testing::UnorderedElementsAreArray(support::LinesOf(expected)));
  // Besides them there are the read-only Id, and those told of at the end.
  EXPECT_EQ(Shown("Desk").size(), values.size() + 4);
  const CommandResult authorization = Packages({"edit", "1", "--Authorization", "false"});
  EXPECT_EQ(authorization.out, "Desk.Authorization = False\n") << authorization.err;
  EXPECT_EQ(Shown("Desk")["Shutdowntime"], 7);  // the other shape has not brought its old values back
}

TEST_F(PackagesCommandTest, TakesEnumerationsByNameAndNumber) {
  Packages({"add", "Orders"});
  EXPECT_EQ(Packages({"edit", "Orders", "--Autentication", "6"}).out,
            "Orders.Autentication = PackagePrivacy\n");
  EXPECT_EQ(Packages({"edit", "Orders", "--exportoptions", "exportroles"}).out,
            "Orders.ExportOptions = ExportRoles\n");
  const CommandResult wrong = Packages({"edit", "Orders", "--Autentication", "Strong"});
  EXPECT_EQ(wrong.status, 2);
  EXPECT_THAT(wrong.err, HasSubstr("PackageIntegrety (5)"));
}

TEST_F(PackagesCommandTest, RefusesTheTwoMeaningsOfOneColumnAtOnce) {
  Packages({"add", "Orders"});
  const CommandResult result =
      Packages({"edit", "Orders", "--Autentication", "2", "--Authorization", "true"});
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(result.err, HasSubstr("the same place in the database"));
  EXPECT_EQ(Shown()["Authorization"], false);
}

TEST_F(PackagesCommandTest, TakesPosixPathsForTheExport) {
  Packages({"add", "Orders"});
  EXPECT_EQ(Packages({"edit", "Orders", "--ExportPath", "/srv/out/x.msi"}).out,
            "Orders.ExportPath = Z:\\srv\\out\\x.msi\n");
}

TEST_F(PackagesCommandTest, RefusesWhatIsNoPropertyOrNothingToDo) {
  Packages({"add", "Orders"});
  EXPECT_THAT(Packages({"edit", "Orders", "--Colour", "red"}).err, HasSubstr("--Colour"));
  EXPECT_THAT(Packages({"edit", "Orders", "--Password", "x"}).err, Not(HasSubstr("Password is")));
  EXPECT_THAT(Packages({"edit", "Orders"}).err, HasSubstr("There is nothing to change."));
  EXPECT_THAT(Packages({"show", "Nope"}).err,
              AllOf(HasSubstr("has no package 'Nope'"), HasSubstr("Orders (1)")));
}

TEST_F(PackagesCommandTest, TakesAPasswordFromStandardInputAndNeverPrintsIt) {
  command.standardInput = command.root.MakeFile("input", "s3cret\r\nmore\n");
  const CommandResult result = Packages({"add", "Orders", "--User", "me", "--password-stdin"});
  EXPECT_EQ(result.out, "Added package Orders (1).\nOrders.User = me\nOrders.Password is set\n")
      << result.err;
  EXPECT_EQ(Shown()["PasswordIsSet"], true);
  for (const HostCommand::Arguments& words :
       {HostCommand::Arguments{"show", "Orders"}, {"show", "Orders", "--json"}, {"list"}, {"list", "--json"}})
    EXPECT_THAT(Packages(words).out, Not(HasSubstr("s3cret")));
  command.standardInput = command.root.MakeFile("input", "\n");
  EXPECT_EQ(Packages({"edit", "Orders", "--password-stdin"}).out, "Orders.Password is empty\n");
}

TEST_F(PackagesCommandTest, RefusesAPasswordThatWouldBeCut) {
  Packages({"add", "Orders"});
  command.standardInput = command.root.MakeFile("input", std::string(51, 'x') + "\n");
  const CommandResult result = Packages({"edit", "Orders", "--password-stdin"});
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(result.err, HasSubstr("longer than 50 characters"));
  EXPECT_EQ(Shown()["PasswordIsSet"], false);
}

TEST_F(PackagesCommandTest, AsksForAPasswordWithoutEcho) {
  if (!HostCommand::HasTerminals()) GTEST_SKIP() << "no pseudo terminals here";
  Packages({"add", "Orders"});
  const CommandResult result = command.RunDialog({"packages", "Shop", "edit", "Orders", "--password"},
                                                 {{"Password for Orders: ", "s3cret"}});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out, "Password for Orders: \r\nOrders.Password is set\r\n");
}

TEST_F(PackagesCommandTest, EndsAnUnansweredQuestionAsCancelled) {
  if (!HostCommand::HasTerminals()) GTEST_SKIP() << "no pseudo terminals here";
  Packages({"add", "Orders"});
  for (const char* key : {"^C", "^D"}) {
    const CommandResult result = command.RunDialog({"packages", "Shop", "edit", "Orders", "--password"},
                                                   {{"Password for Orders: ", key}});
    EXPECT_EQ(result.status, 3) << key;
    EXPECT_THAT(result.out, HasSubstr("No password was given.")) << key;
  }
  EXPECT_EQ(Shown()["PasswordIsSet"], false);
}

TEST_F(PackagesCommandTest, TellsWhereNoTerminalIsHowToGiveAPassword) {
  Packages({"add", "Orders"});
  const CommandResult result = Packages({"edit", "Orders", "--password"});
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(result.err, HasSubstr("--password-stdin"));
  command.standardInput = "/dev/null";
  EXPECT_THAT(Packages({"edit", "Orders", "--password-stdin"}).err, HasSubstr("There is no password"));
}

TEST_F(PackagesCommandTest, AssignsProjectsAndTakesThemAway) {
  Packages({"add", "Orders"});
  Packages({"add", "Stock"});
  EXPECT_EQ(Packages({"assign", "Stock", "lib"}).out, "Lib: package Stock\n");
  EXPECT_EQ(PackageOf("Lib"), 2);
  EXPECT_EQ(Packages({"assign", "--none", "Lib"}).out, "Lib: no package\n");
  EXPECT_EQ(PackageOf("Lib"), 0);
}

TEST_F(PackagesCommandTest, AssignsServerComponentsOnly) {
  Packages({"add", "Orders"});
  const CommandResult result = Packages({"assign", "Orders", "Lib", "App"});
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(result.err, HasSubstr("App is no ActiveX DLL or EXE."));
  EXPECT_EQ(PackageOf("Lib"), 0);  // all or none
  EXPECT_THAT(Packages({"assign", "Orders"}).err, HasSubstr("Which projects?"));
  EXPECT_THAT(Packages({"assign", "Orders", "Nope"}).err, HasSubstr("has no project 'Nope'"));
}

TEST_F(PackagesCommandTest, RemovesAPackageThatNoProjectIsIn) {
  Packages({"add", "Orders"});
  Packages({"assign", "Orders", "Lib"});
  const CommandResult refused = Packages({"remove", "Orders"});
  EXPECT_EQ(refused.status, 2);
  EXPECT_THAT(refused.err, AllOf(HasSubstr("is used by Lib"), HasSubstr("assign --none 'Lib'")));
  Packages({"assign", "--none", "Lib"});
  EXPECT_EQ(Packages({"remove", "Orders"}).status, 0);
  EXPECT_EQ(Packages({"--json"}).out, "[]\n");
}

TEST_F(PackagesCommandTest, ShowOfABuildListsItsPackages) {
  EXPECT_THAT(command.Run({"show", "Shop"}).out, Not(HasSubstr("Packages")));
  Packages({"add", "Orders"});
  Packages({"assign", "Orders", "Lib"});
  EXPECT_THAT(command.Run({"show", "Shop"}).out, HasSubstr("Packages\n   1  Orders                   Lib\n"));
  EXPECT_EQ(json::parse(command.Run({"show", "Shop", "--json"}).out)["packages"].dump(),
            R"([{"id":1,"name":"Orders"}])");
}

class AskForPackage : public PackagesCommandTest {
 protected:
  AskForPackage() {
    command.WriteProject("Desk", "OleDll");
    command.WriteProject("Server", "OleExe");
    command.WriteProject("Form", "Exe");
    command.Run({"settings", "AskForMTSPackage", "true"});
    Packages({"add", "Orders"});
  }
  HostCommand::Arguments Words() const {
    return {"add", "Shop", command.Source("Desk.vbp"), command.Source("Server.vbp"),
            command.Source("Form.vbp")};
  }
};

TEST_F(AskForPackage, AddAsksForThePackageOfEachServerComponent) {
  if (!HostCommand::HasTerminals()) GTEST_SKIP() << "no pseudo terminals here";
  const CommandResult result =
      command.RunDialog(Words(), {{"Package of Desk (1 Orders; nothing for none): ", "Nope"},
                                  {"Package of Desk (1 Orders; nothing for none): ", "orders"},
                                  {"Package of Server (1 Orders; nothing for none): ", ""}});
  EXPECT_EQ(result.status, 0) << result.out;
  EXPECT_THAT(result.out, AllOf(HasSubstr("has no package 'Nope'"), Not(HasSubstr("Package of Form"))));
  EXPECT_EQ(PackageOf("Desk"), 1);
  EXPECT_EQ(PackageOf("Server"), 0);
}

TEST_F(AskForPackage, TheEndOfTheInputLeavesTheRestWithout) {
  if (!HostCommand::HasTerminals()) GTEST_SKIP() << "no pseudo terminals here";
  const CommandResult result = command.RunDialog(Words(), {{"nothing for none): ", "^D"}});
  EXPECT_EQ(result.status, 0) << result.out;
  EXPECT_THAT(result.out, Not(HasSubstr("Package of Server")));
  EXPECT_EQ(PackageOf("Desk"), 0);
}

TEST_F(AskForPackage, NothingIsAskedWithoutATerminalOrTheSetting) {
  EXPECT_THAT(command.Run(Words()).out, Not(HasSubstr("Package of")));
  if (!HostCommand::HasTerminals()) GTEST_SKIP() << "no pseudo terminals here";
  command.WriteProject("Other", "OleDll");
  command.Run({"settings", "AskForMTSPackage", "false"});
  EXPECT_THAT(command.RunDialog({"add", "Shop", command.Source("Other.vbp")}, {}).out,
              Not(HasSubstr("Package of")));
}

}  // namespace
}  // namespace hearthmake::host
