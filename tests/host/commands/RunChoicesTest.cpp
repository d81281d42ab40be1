// What `build` compiles with its options: --changed, --only, --from, --keep-going, --dry-run and --why.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <map>
#include <nlohmann/json.hpp>
#include <set>

#include "support/CairoSuite.hpp"
#include "support/HostCommand.hpp"

namespace hearthmake::host {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using support::CairoSuite;
using support::CommandResult;
using support::HostCommand;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

using Names = std::vector<std::string>;

std::vector<json> EventsOf(const CommandResult& result, const std::string& name) {
  std::vector<json> events;
  for (const std::string& line : support::LinesOf(result.out)) {
    json event = json::parse(line, nullptr, false);
    if (event.is_object() && event.at("event") == name) events.push_back(std::move(event));
  }
  return events;
}

Names ProjectsOf(const std::vector<json>& events) {
  Names names;
  for (const json& event : events) names.push_back(event.at("project"));
  return names;
}

Names CompiledIn(const CommandResult& result) { return ProjectsOf(EventsOf(result, "ProjectCompiled")); }

std::string ReasonsIn(const CommandResult& result) {
  std::string text;
  for (const json& event : EventsOf(result, "WillCompile")) {
    text += event.at("project").get<std::string>() + ": " + event.value("reason", "") + "\n";
  }
  return text;
}

// Newer than all that was written so far.
void Touch(const std::string& path) {
  ASSERT_TRUE(fs::exists(path)) << path;
  fs::last_write_time(path, fs::file_time_type::clock::now());
}

// Every file below a folder with its bytes and times, and every folder.
std::map<std::string, std::string> Snapshot(const std::string& folder) {
  std::map<std::string, std::string> files;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    std::string& text = files[entry.path()];
    // A database that is read has files beside it meanwhile, which a folder's time shows.
    if (!entry.is_regular_file()) continue;
    std::ifstream file(entry.path(), std::ios::binary);
    text = std::to_string(entry.last_write_time().time_since_epoch().count()) + " " +
           std::string(std::istreambuf_iterator<char>(file), {});
  }
  return files;
}

// The example suite, compiled once.
class ChangedExamples : public testing::Test {
 protected:
  ChangedExamples() {
    fs::copy(SOURCE_DIRECTORY "/examples/suite", command.root.Path("suite"), fs::copy_options::recursive);
    for (const auto& entry : fs::recursive_directory_iterator(command.root.Path("suite")))
      fs::permissions(entry.path(), fs::perms::owner_all, fs::perm_options::add);
    command.root.MakeFolder("data/drive_c/Suite/Bin");
    command.root.MakeFolder("suite/bin");
    command.Run({"new", "Desk"});
    command.Run({"settings", "VBExe", BINARY_DIRECTORY "/tools/vb6/vb6"});
    command.Run({"scan", "Desk", command.root.Path("suite"), "--tests"});
  }
  void BuildAll() {
    const CommandResult result = command.Run({"build", "Desk"});
    ASSERT_EQ(result.status, 0) << result.out << result.err;
  }
  CommandResult Changed(HostCommand::Arguments more = {}) {
    more.insert(more.begin(), {"build", "Desk", "--changed", "--json"});
    return command.Run(more);
  }
  std::string Suite(const std::string& name) const { return command.root.Path("suite/" + name); }

  HostCommand command;
};

TEST_F(ChangedExamples, CompileNothingAfterAFullRun) {
  BuildAll();
  const CommandResult result = Changed();
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_THAT(CompiledIn(result), IsEmpty());
  const json start = EventsOf(result, "BuildStart").at(0);
  EXPECT_EQ(start.at("projects"), 0);
  EXPECT_EQ(start.at("leftOut").size(), 14U);
  EXPECT_EQ(start.at("leftOut").at(0).at("choice"), "upToDate");
  EXPECT_EQ(EventsOf(result, "BuildComplete").size(), 1U);
}

TEST_F(ChangedExamples, CompileEverythingWithoutABinary) {
  EXPECT_EQ(CompiledIn(Changed()).size(), 14U);
  EXPECT_THAT(CompiledIn(Changed()), IsEmpty());
}

// Three of the projects count up their revision: their files are written to when the binary is there already.
TEST_F(ChangedExamples, StayUpToDateThoughTheCompilerCountsUpTheirRevision) {
  BuildAll();
  EXPECT_GT(fs::last_write_time(Suite("Common/OdCommon.vbp")),
            fs::last_write_time(Suite("bin/OdCommon.dll")));
  EXPECT_THAT(CompiledIn(Changed()), IsEmpty());
  Touch(Suite("Common/OdCommon.vbp"));
  EXPECT_THAT(CompiledIn(Changed()), Contains("OdCommon"));
  EXPECT_THAT(CompiledIn(Changed()), IsEmpty());
}

TEST_F(ChangedExamples, CompileATouchedProjectAndWhatDependsOnIt) {
  BuildAll();
  Touch(Suite("Stock/Warehouse.cls"));
  EXPECT_THAT(CompiledIn(Changed()),
              ElementsAre("OdStock", "OdOrders", "OdServer", "OdDesk", "OdReports", "OdOrdersTest"));
  EXPECT_THAT(CompiledIn(Changed()), IsEmpty());
  Touch(Suite("Grid/GridColumns.pag"));
  EXPECT_THAT(CompiledIn(Changed()), ElementsAre("OdGrid", "OdDesk"));
  Touch(Suite("Desk/frmDesk.frm"));
  EXPECT_THAT(CompiledIn(Changed()), ElementsAre("OdDesk"));
  Touch(Suite("Import/modImport.bas"));
  EXPECT_THAT(CompiledIn(Changed()), ElementsAre("OdImport"));
}

TEST_F(ChangedExamples, CompileAgainWhatAMissingBinaryConcerns) {
  BuildAll();
  fs::remove(Suite("bin/OdPrint.dll"));
  EXPECT_THAT(CompiledIn(Changed()), ElementsAre("OdPrint", "OdServer", "OdDesk", "OdReports"));
}

TEST_F(ChangedExamples, TellTheReason) {
  BuildAll();
  Touch(Suite("Stock/Warehouse.cls"));
  const CommandResult text = command.Run({"build", "Desk", "--changed", "--why"});
  EXPECT_THAT(text.out, HasSubstr("Left out: 8 up to date.\n"));
  EXPECT_THAT(text.out,
              AllOf(HasSubstr("OdStock                  compiled: " + Suite("Stock/Warehouse.cls") + " (20"),
                    HasSubstr(") is newer than " + Suite("bin/OdStock.dll") + " (20"),
                    HasSubstr("compiled: it depends on OdStock, which is compiled"),
                    HasSubstr("OdCommon                 left out: up to date")));
  Touch(Suite("Stock/Warehouse.cls"));
  const std::vector<json> events = EventsOf(Changed(), "WillCompile");
  ASSERT_EQ(events.size(), 6U);
  EXPECT_THAT(events[0].at("reason").get<std::string>(), HasSubstr("Warehouse.cls"));
  EXPECT_EQ(events[1].at("reason"), "it depends on OdStock, which is compiled");
}

TEST_F(ChangedExamples, CompileOnlyThoseOfTheNamedThatChanged) {
  BuildAll();
  Touch(Suite("Stock/Warehouse.cls"));
  EXPECT_THAT(CompiledIn(Changed({"--only", "OdGrid", "OdStock"})), ElementsAre("OdStock"));
  // The rest of what changed is still to be done.
  EXPECT_THAT(CompiledIn(Changed({"--from", "OdServer"})), Not(Contains("OdOrders")));
  EXPECT_THAT(CompiledIn(Changed()), Contains("OdOrders"));
  EXPECT_THAT(CompiledIn(Changed()), IsEmpty());
}

TEST_F(ChangedExamples, LeaveServicesAndScriptsAloneWhenThereIsNothingToCompile) {
  command.root.MakeFile("say.vbs", "Scripts.Notify \"the script ran\"\r\n");
  command.Run({"settings", "RunScripts", "true"});
  command.Run({"scripts", "Desk", "BeforeComplie", "--set", command.root.Path("say.vbs")});
  BuildAll();
  const CommandResult idle = command.Run({"build", "Desk", "--changed"});
  EXPECT_THAT(idle.out, Not(HasSubstr("the script ran")));
  Touch(Suite("Grid/GridColumns.pag"));
  EXPECT_THAT(command.Run({"build", "Desk", "--changed"}).out, HasSubstr("the script ran"));
}

TEST_F(ChangedExamples, GoOnAfterAFailureWithWhatIsLeft) {
  BuildAll();
  Touch(Suite("Stock/Warehouse.cls"));
  command.environment = {{"VB6_STANDIN_FAIL", "OdOrders"}};
  EXPECT_EQ(Changed().status, 1);
  command.environment.clear();
  const CommandResult resumed = command.Run({"build", "Desk", "--resume", "--json"});
  EXPECT_EQ(resumed.status, 0) << resumed.err;
  EXPECT_THAT(CompiledIn(resumed),
              ElementsAre("OdOrders", "OdServer", "OdDesk", "OdReports", "OdOrdersTest"));
  EXPECT_THAT(CompiledIn(Changed()), IsEmpty());
}

TEST_F(ChangedExamples, ADryRunTouchesNothing) {
  for (const bool isBuilt : {false, true}) {
    SCOPED_TRACE(isBuilt);
    if (isBuilt) BuildAll();
    const auto before = Snapshot(command.root.Path());
    for (const HostCommand::Arguments& more : {HostCommand::Arguments{},
                                               {"--json"},
                                               {"--changed", "--why"},
                                               {"--only", "OdCommon"},
                                               {"--resume"}}) {
      HostCommand::Arguments arguments = {"build", "Desk", "--dry-run"};
      arguments.insert(arguments.end(), more.begin(), more.end());
      const pid_t process = command.Start(arguments);
      EXPECT_EQ(command.Finish(process).status, 0);
      for (const char* stream : {".out", ".err"})
        fs::remove(command.root.Path("output-" + std::to_string(process) + stream));
    }
    const auto after = Snapshot(command.root.Path());
    for (const auto& [path, content] : after) {
      ASSERT_TRUE(before.contains(path)) << path << " came";
      EXPECT_TRUE(before.at(path) == content) << path << " was changed";
    }
    EXPECT_EQ(after.size(), before.size());
  }
}

TEST_F(ChangedExamples, ADryRunShowsWhatTheBuildThenDoes) {
  BuildAll();
  command.Run({"set", "Desk", "OdPrint", "MajorVer", "7"});
  const CommandResult dry =
      command.Run({"build", "Desk", "--dry-run", "--json", "--only", "OdPrint", "OdServer"});
  EXPECT_EQ(dry.status, 0);
  const std::vector<json> compiles = EventsOf(dry, "WouldCompile");
  ASSERT_THAT(ProjectsOf(compiles), ElementsAre("OdPrint", "OdServer"));
  EXPECT_THAT(compiles[0].at("changes").get<std::string>(),
              AllOf(HasSubstr("\n-MajorVer=1\n+MajorVer=7\n"), HasSubstr("@@ ")));
  EXPECT_THAT(compiles[1].at("mayChange"), ElementsAre("OdPrint"));
  EXPECT_THAT(compiles[1].at("notYetKnown"), IsEmpty());
  EXPECT_EQ(EventsOf(dry, "DryRun").at(0).at("leftOut").size(), 12U);
  const std::string before = command.root.Content("suite/Print/OdPrint.vbp");
  ASSERT_EQ(command.Run({"build", "Desk", "--only", "OdPrint", "OdServer"}).status, 0);
  EXPECT_THAT(before, HasSubstr("\nMajorVer=1\r"));
  EXPECT_THAT(command.root.Content("suite/Print/OdPrint.vbp"), HasSubstr("\nMajorVer=7\r"));
  EXPECT_THAT(
      EventsOf(command.Run({"build", "Desk", "--dry-run", "--json", "--only", "OdPrint"}), "WouldCompile")
          .at(0)
          .at("changes"),
      "");
}

TEST_F(ChangedExamples, ADryRunSaysThatAnIdentityIsNotKnownYet) {
  const CommandResult text = command.Run({"build", "Desk", "--dry-run"});
  EXPECT_EQ(text.status, 0) << text.err;
  EXPECT_THAT(text.out, HasSubstr("Would compile 14 of 14 projects of Desk."));
  EXPECT_THAT(text.out, HasSubstr("\n+Reference=*\\G{not known yet}#?#0#"));
  EXPECT_THAT(text.out, HasSubstr("\n+Object={not known yet}#?#0; OdGrid.ocx\n"));
  EXPECT_THAT(text.out,
              HasSubstr("Not built yet, so that their identity is not known: OdCommon, OdInterfaces\n"));
}

TEST_F(ChangedExamples, ADryRunTellsWhatWouldFail) {
  command.Run({"set", "Desk", "OdCommon", "Path32", command.root.Path("gone")});
  const CommandResult folder = command.Run({"build", "Desk", "--dry-run", "--only", "OdCommon"});
  EXPECT_EQ(folder.status, 1);
  EXPECT_THAT(folder.out, HasSubstr("It would fail: The path to the binary component does not exist!"));
  EXPECT_THAT(folder.out, HasSubstr("mkdir -p '" + command.root.Path("gone") + "'"));
  // A binary that this run does not make either.
  const CommandResult missing = command.Run({"build", "Desk", "--dry-run", "--json", "--only", "OdData"});
  EXPECT_EQ(missing.status, 1);
  EXPECT_THAT(EventsOf(missing, "WouldCompile").at(0).at("problem").get<std::string>(),
              HasSubstr("could not be found"));
}

TEST_F(ChangedExamples, ADryRunColoursItsDiffOnATerminal) {
  if (!HostCommand::HasTerminals()) GTEST_SKIP() << "there are no pseudo terminals here";
  BuildAll();
  command.Run({"set", "Desk", "OdPrint", "MajorVer", "7"});
  const CommandResult result =
      command.RunOnTerminal({"build", "Desk", "--dry-run", "--only", "OdPrint"}, 100);
  EXPECT_THAT(result.out, HasSubstr("\x1b[1;31m-MajorVer=1\x1b[0m"));
  EXPECT_THAT(result.out, HasSubstr("\x1b[1;32m+MajorVer=7\x1b[0m"));
}

// Lib, App which references it, and Tool.
class RunChoices : public testing::Test {
 protected:
  RunChoices() { command.MakeShop(); }

  HostCommand command;
};

TEST_F(RunChoices, OnlyCompilesTheNamedProjectsInCompileOrder) {
  const CommandResult result = command.Run({"build", "Shop", "--only", "Tool", "Lib"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_THAT(command.Compiled(), ElementsAre("Lib", "Tool"));
  EXPECT_THAT(result.out, HasSubstr("Left out: 1 not asked for.\n"));
  EXPECT_THAT(result.out, HasSubstr("[2/2] Compiling Tool"));
}

TEST_F(RunChoices, FromCompilesAProjectAndAllBehindIt) {
  command.Run({"build", "Shop"});
  command.ForgetCompiled();
  EXPECT_EQ(command.Run({"build", "Shop", "--from", "App"}).status, 0);
  EXPECT_THAT(command.Compiled(), ElementsAre("App", "Tool"));
}

TEST_F(RunChoices, AWrongNameListsWhatThereIsAndBeginsNothing) {
  command.FailOn("App");
  command.Run({"build", "Shop"});
  command.BehaveWell();
  for (const char* option : {"--only", "--from"}) {
    const CommandResult result = command.Run({"build", "Shop", option, "Till"});
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.err, AllOf(HasSubstr("no project 'Till'"), HasSubstr("It has: App, Lib, Tool")));
  }
  // The stopped run is still there to go on with.
  command.ForgetCompiled();
  EXPECT_EQ(command.Run({"build", "Shop", "--resume"}).status, 0);
  EXPECT_THAT(command.Compiled(), ElementsAre("App", "Tool"));
}

TEST_F(RunChoices, RefusesWhatMakesNoSense) {
  const CommandResult both = command.Run({"build", "Shop", "--only", "Lib", "--from", "App"});
  EXPECT_EQ(both.status, 2);
  EXPECT_THAT(both.err, HasSubstr("--only and --from both say which projects are compiled"));
  const CommandResult sources = command.Run({"build", "Shop", "--dry-run", "--sources"});
  EXPECT_EQ(sources.status, 2);
  EXPECT_THAT(sources.err, HasSubstr("--dry-run touches nothing"));
  EXPECT_THAT(command.Compiled(), IsEmpty());
}

TEST_F(RunChoices, SaysThatANamedProjectIsSwitchedOff) {
  command.Run({"set", "Shop", "Tool", "CompileMe", "false"});
  const CommandResult result = command.Run({"build", "Shop", "--only", "Tool", "Lib"});
  EXPECT_THAT(command.Compiled(), ElementsAre("Lib"));
  EXPECT_THAT(result.err, HasSubstr("Tool is switched off and is not compiled."));
}

TEST_F(RunChoices, ResumingGoesOnWithWhatWasAskedForOnly) {
  command.FailOn("Lib");
  ASSERT_EQ(command.Run({"build", "Shop", "--only", "Lib", "App"}).status, 1);
  command.BehaveWell();
  const CommandResult result = command.Run({"build", "Shop", "--resume", "--why"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_THAT(command.Compiled(), ElementsAre("Lib", "App"));
  EXPECT_THAT(result.out, HasSubstr("left out: the stopped run was not asked for it"));
}

TEST_F(RunChoices, AChoiceNarrowsWhatAResumedRunHasLeft) {
  command.Run({"build", "Shop"});
  command.ForgetCompiled();
  command.FailOn("Lib");
  ASSERT_EQ(command.Run({"build", "Shop"}).status, 1);
  command.BehaveWell();
  ASSERT_EQ(command.Run({"build", "Shop", "--resume", "--from", "App"}).status, 0);
  EXPECT_THAT(command.Compiled(), ElementsAre("App", "Tool"));
}

// Two libraries more: Net, and Mail which references it; and Post, which references Mail.
class KeepGoing : public RunChoices {
 protected:
  KeepGoing() {
    command.WriteProject("Net", "OleDll");
    command.WriteProject("Mail", "OleDll", "Reference=*\\ANet.vbp\r\n");
    command.WriteProject("Post", "Exe", "Reference=*\\AMail.vbp\r\n");
    command.Run(
        {"add", "Shop", command.Source("Net.vbp"), command.Source("Mail.vbp"), command.Source("Post.vbp")});
  }
};

TEST_F(KeepGoing, CompilesWhatDoesNotDependOnAFailure) {
  command.FailOn("Net");
  const CommandResult result = command.Run({"build", "Shop", "--keep-going"});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(command.Compiled(), ElementsAre("Lib", "App", "Tool"));
  EXPECT_THAT(result.err, HasSubstr("FAILED: Net ("));
  EXPECT_THAT(result.err, HasSubstr("Build failed: Shop, 3 of 6 projects compiled"));
  EXPECT_THAT(result.err, HasSubstr("Failed: Net\nLeft out because of Net: Mail, Post\n"));
  EXPECT_THAT(result.err, HasSubstr("hearthmake build 'Shop' --resume"));
}

TEST_F(KeepGoing, TellsOfEachFailure) {
  command.root.MakeFile("fail", "Lib\nMail\n");
  const CommandResult result = command.Run({"build", "Shop", "--keep-going"});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(command.Compiled(), ElementsAre("Tool", "Net"));
  EXPECT_THAT(result.err,
              HasSubstr("Failed: Lib, Mail\nLeft out because of Lib: App\nLeft out because of Mail: Post\n"));
}

TEST_F(KeepGoing, ResumesWithTheFailedAndWhatWasLeftOutBecauseOfThem) {
  command.FailOn("Net");
  command.Run({"build", "Shop", "--keep-going"});
  command.BehaveWell();
  command.ForgetCompiled();
  const CommandResult result = command.Run({"build", "Shop", "--resume"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_THAT(command.Compiled(), ElementsAre("Net", "Mail", "Post"));
}

TEST_F(KeepGoing, IsOneRunForThoseWhoListen) {
  command.root.MakeFile("fail", "Lib\nNet\n");
  const CommandResult result = command.Run({"build", "Shop", "--keep-going", "--json"});
  EXPECT_EQ(EventsOf(result, "BuildStart").size(), 1U);
  EXPECT_EQ(EventsOf(result, "BuildComplete").size(), 0U);
  const std::vector<json> failures = EventsOf(result, "BuildFaild");
  ASSERT_THAT(ProjectsOf(failures), ElementsAre("Lib", "Net"));
  EXPECT_THAT(ProjectsOf(failures[1].at("leftOut")), ElementsAre("Mail", "Post"));
  EXPECT_EQ(failures[1].at("leftOut").at(0).at("choice"), "afterFailure");
  EXPECT_EQ(failures[1].at("leftOut").at(0).at("reason"), "it depends on Net, which failed");
  const json summary = EventsOf(result, "Summary").at(0);
  EXPECT_THAT(ProjectsOf(summary.at("failed")), ElementsAre("Lib", "Net"));
  EXPECT_THAT(ProjectsOf(summary.at("leftOut")), ElementsAre("App", "Mail", "Post"));
  EXPECT_EQ(summary.at("compiled"), 1);
}

TEST_F(KeepGoing, IsCompleteWhenNothingFails) {
  const CommandResult result = command.Run({"build", "Shop", "--keep-going"});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.out, HasSubstr("Done. Shop: 6 of 6 projects compiled"));
}

TEST_F(KeepGoing, DoesNotRunTheScriptOfCompletionAfterAFailure) {
  command.root.MakeFile("say.vbs", "Scripts.Notify \"complete\"\r\n");
  command.Run({"settings", "RunScripts", "true"});
  command.Run({"scripts", "Shop", "CompileComplete", "--set", command.root.Path("say.vbs")});
  command.FailOn("Lib");
  EXPECT_THAT(command.Run({"build", "Shop", "--keep-going"}).out, Not(HasSubstr("complete")));
  command.BehaveWell();
  EXPECT_THAT(command.Run({"build", "Shop", "--resume", "--keep-going"}).out, HasSubstr("complete"));
  EXPECT_THAT(command.Run({"scripts", "Shop", "CompileComplete"}).out, HasSubstr("Notify"));
}

TEST_F(KeepGoing, LeavesNothingSwitchedOffBehind) {
  command.FailOn("Lib");
  command.Run({"build", "Shop", "--keep-going"});
  command.BehaveWell();
  command.ForgetCompiled();
  EXPECT_EQ(command.Run({"build", "Shop"}).status, 0);
  EXPECT_EQ(command.Compiled().size(), 6U);
}

TEST_F(KeepGoing, ACancelEndsEverything) {
  command.FailOn("Lib");
  command.SleepOn("Net");
  const pid_t process = command.Start({"build", "Shop", "--keep-going"});
  ASSERT_GT(command.WaitForSleeper(), 0);
  kill(process, SIGINT);
  const CommandResult result = command.Finish(process);
  EXPECT_EQ(result.status, 3);
  EXPECT_THAT(command.Compiled(), ElementsAre("Tool"));
  command.BehaveWell();
  EXPECT_EQ(command.Run({"build", "Shop", "--resume"}).status, 0);
  EXPECT_THAT(command.Compiled(), ElementsAre("Tool", "Lib", "App", "Net", "Mail", "Post"));
}

// Who references whom, as the database has it: the test's own way to know what a change concerns.
std::map<int, std::set<int>> UsersIn(const std::string& database) {
  std::map<int, std::set<int>> users;
  sqlite3* db = nullptr;
  EXPECT_EQ(sqlite3_open_v2(database.c_str(), &db, SQLITE_OPEN_READONLY, nullptr), SQLITE_OK);
  const auto row = [](void* context, int /*count*/, char** values, char** /*names*/) {
    (*static_cast<std::map<int, std::set<int>>*>(context))[std::stoi(values[1])].insert(std::stoi(values[0]));
    return 0;
  };
  EXPECT_EQ(sqlite3_exec(db, "SELECT idReferencing, idReferenced FROM \"References\"", row, &users, nullptr),
            SQLITE_OK);
  sqlite3_close(db);
  return users;
}

class ChangedCairo : public testing::Test {
 protected:
  void SetUp() override {
    if (!CairoSuite::IsThere()) GTEST_SKIP() << "the suite is not there: " << CairoSuite::Place();
    suite = std::make_unique<CairoSuite>(command);
    order = json::parse(suite->Run({"order", "Cairo", "--json"}).out);
    ASSERT_GT(order.size(), 200U);
    const CommandResult full = suite->Run({"build", "Cairo"});
    ASSERT_EQ(full.status, 0) << full.err;
    users = UsersIn(command.Data() + "/Build.mdb");
  }
  std::string PathOf(const json& project) const { return suite->Posix(project.at("path")); }

  // A project and all that depends on it, in compile order.
  Names WithUsers(int id) const {
    std::set<int> concerned = {id};
    for (bool grows = true; grows;) {
      grows = false;
      for (const int target : std::set<int>(concerned)) {
        const auto found = users.find(target);
        if (found == users.end()) continue;
        for (const int user : found->second) grows |= concerned.insert(user).second;
      }
    }
    Names names;
    for (const json& project : order) {
      if (concerned.contains(project.at("id").get<int>())) names.push_back(project.at("name"));
    }
    return names;
  }
  CommandResult Changed(HostCommand::Arguments more = {}) {
    more.insert(more.begin(), {"build", "Cairo", "--changed", "--json"});
    return suite->Run(more);
  }

  HostCommand command;
  std::unique_ptr<CairoSuite> suite;
  json order;
  std::map<int, std::set<int>> users;
};

TEST_F(ChangedCairo, CompilesExactlyWhatATouchedFileConcerns) {
  const CommandResult unchanged = Changed();
  EXPECT_THAT(CompiledIn(unchanged), IsEmpty()) << ReasonsIn(unchanged);
  // One that some depend on, one that nearly all do, one that none does.
  std::map<std::size_t, json> bySize;
  for (const json& project : order) bySize.emplace(WithUsers(project.at("id").get<int>()).size(), project);
  const auto some = std::next(bySize.begin(), static_cast<std::ptrdiff_t>(bySize.size() / 2));
  for (const json& project : {some->second, bySize.rbegin()->second, bySize.begin()->second}) {
    SCOPED_TRACE(project.at("name"));
    Touch(PathOf(project));
    const CommandResult result = Changed();
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(CompiledIn(result), WithUsers(project.at("id").get<int>()));
    EXPECT_THAT(CompiledIn(Changed()), IsEmpty());
  }
}

TEST_F(ChangedCairo, NoticesEachKindOfSource) {
  for (const char* key : {"Class", "Module", "Form", "UserControl", "ResFile32", "RelatedDoc"}) {
    SCOPED_TRACE(key);
    // The first project in compile order that has one.
    std::string file;
    std::string name;
    for (const json& project : order) {
      const auto files = suite->FilesOf(PathOf(project), key);
      if (files.empty()) continue;
      file = suite->Posix(files.front());
      name = project.at("name");
      break;
    }
    ASSERT_NE(file, "");
    Touch(file);
    const std::vector<json> events = EventsOf(Changed({"--dry-run"}), "WouldCompile");
    ASSERT_FALSE(events.empty());
    EXPECT_EQ(events.front().at("project"), name);
    EXPECT_THAT(events.front().at("reason").get<std::string>(), HasSubstr(file + " ("));
    ASSERT_EQ(Changed().status, 0);
    EXPECT_THAT(CompiledIn(Changed()), IsEmpty());
  }
}

}  // namespace
}  // namespace hearthmake::host
