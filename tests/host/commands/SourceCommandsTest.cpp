// The commands that work with source control, on a real repository.

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <nlohmann/json.hpp>

#include "support/HostCommand.hpp"
#include "support/HostRepository.hpp"

namespace hearthmake::host {
namespace {

using nlohmann::json;
using support::CommandResult;
using support::HostCommand;
using support::HostRepository;
using support::LinesOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

// A build Shop whose three projects are kept in $/Suite. Bob works in the folder src.
class SourceCommandsTest : public testing::Test {
 protected:
  void SetUp() override {
    if (!HostRepository::HasGit()) GTEST_SKIP() << "git is not installed";
    repository.emplace(command);
    command.MakeShop();
    for (const char* name : {"Lib", "App", "Tool"}) {
      repository->Write("Suite/" + std::string(name) + ".vbp", Read(std::string(name) + ".vbp"));
    }
    repository->CommitAndPush("Three projects");
    AddSource("$/Suite", command.root.Path("src"));
  }
  void AddSource(const std::string& project, const std::string& folder) {
    const CommandResult result = command.Run({"sourceprojects", "Shop", "add", project, "--ini",
                                              repository->Ini(), "--user", "Bob", "--folder", folder});
    ASSERT_EQ(result.status, 0) << result.err;
  }
  std::string Read(const std::string& name) const { return command.root.Content("src/" + name); }

  HostCommand command;
  std::optional<HostRepository> repository;
};

TEST_F(SourceCommandsTest, SourcesGetsWhatIsNew) {
  const CommandResult result = command.Run({"sources", "Shop"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(result.out, "Getting $/Suite into " + command.root.Path("src") +
                            "\n  $/Suite/readme.txt\nShop: got 1 file, 3 unchanged.\n");
  EXPECT_EQ(Read("readme.txt"), "first\n");
  repository->Write("Suite/readme.txt", "second\n");
  repository->Write("Suite/Deep/Er/a.cls", "a\n");
  repository->CommitAndPush("More");
  EXPECT_THAT(command.Run({"sources", "Shop", "suite"}).out, HasSubstr("got 2 files, 3 unchanged"));
  EXPECT_EQ(Read("readme.txt"), "second\n");
  EXPECT_EQ(Read("Deep/Er/a.cls"), "a\n");
}

TEST_F(SourceCommandsTest, SourcesReplacesLocalWorkUnlessItIsToBeKept) {
  command.root.MakeFile("src/readme.txt", "mine\n");
  command.Run({"sourceprojects", "Shop", "edit", "1", "--flags", "recursive,keep"});
  const CommandResult kept = command.Run({"sources", "Shop"});
  EXPECT_EQ(kept.status, 0) << kept.err;
  EXPECT_THAT(kept.out, HasSubstr("$/Suite/readme.txt was left as it is"));
  EXPECT_THAT(kept.out, HasSubstr("got 0 files, 3 unchanged, 1 left as they are"));
  EXPECT_EQ(Read("readme.txt"), "mine\n");
  command.Run({"sourceprojects", "Shop", "edit", "1", "--flags", "recursive"});
  EXPECT_EQ(command.Run({"sources", "Shop"}).status, 0);
  EXPECT_EQ(Read("readme.txt"), "first\n");
}

TEST_F(SourceCommandsTest, SourcesPrintsJsonLines) {
  const auto lines = LinesOf(command.Run({"sources", "Shop", "--json"}).out);
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_EQ(json::parse(lines[0]).at("event"), "GettingLatestVersion");
  EXPECT_EQ(json::parse(lines[0]).at("project"), "$/Suite");
  EXPECT_EQ(json::parse(lines[1]).at("file"), "$/Suite/readme.txt");
  EXPECT_EQ(json::parse(lines[1]).at("got"), true);
}

TEST_F(SourceCommandsTest, SourcesTakesTheNamedProjectsAlone) {
  repository->Write("Other/b.cls", "b\n");
  repository->CommitAndPush("Another project");
  AddSource("$/Other", command.root.Path("other"));
  const CommandResult result = command.Run({"sources", "Shop", "2"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_THAT(result.out, Not(HasSubstr("$/Suite")));
  EXPECT_EQ(command.root.Content("other/b.cls"), "b\n");
  EXPECT_EQ(command.Run({"sources", "Shop", "Nothing"}).status, 2);
}

TEST_F(SourceCommandsTest, SourcesFailsWithTheReasonAndWhatToDo) {
  command.Run({"sourceprojects", "Shop", "edit", "1", "--project", "$/Nowhere"});
  CommandResult result = command.Run({"sources", "Shop"});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.err, StartsWith("hearthmake: error: "));
  EXPECT_THAT(result.err, HasSubstr("$/Nowhere"));
  EXPECT_THAT(result.err, HasSubstr("hearthmake sourceprojects 'Shop'"));
  command.Run({"sourceprojects", "Shop", "remove", "1"});
  result = command.Run({"sources", "Shop"});
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(result.err, HasSubstr("has no source projects"));
}

TEST_F(SourceCommandsTest, SourcesNamesTheScriptThatFailedBeforeThem) {
  command.root.MakeFile("before.vbs", "x = 1 / 0\n");
  command.Run({"scripts", "Shop", "BeforeSourceSafe", "--set", command.root.Path("before.vbs")});
  command.Run({"settings", "RunScripts", "true"});
  const CommandResult result = command.Run({"sources", "Shop"});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.err, HasSubstr("Script Error: Division by zero"));
  EXPECT_THAT(result.err, HasSubstr("hearthmake scripts 'Shop' --check"));
  EXPECT_FALSE(std::filesystem::exists(command.Source("readme.txt")));
}

TEST_F(SourceCommandsTest, LabelIsPutOnTheSourcesAndSourcesGetsIt) {
  const CommandResult labelled = command.Run({"label", "Shop", "Release 1", "-m", "as shipped"});
  EXPECT_EQ(labelled.status, 0) << labelled.err;
  EXPECT_EQ(labelled.out, "$/Suite: Release 1\n");
  EXPECT_THAT(repository->Git("for-each-ref --format='%(objecttype) %(taggername) %(contents)' refs/tags"),
              testing::AllOf(HasSubstr("tag Bob"), HasSubstr("as shipped")));
  repository->Write("Suite/readme.txt", "second\n");
  repository->CommitAndPush("More");
  command.Run({"sources", "Shop"});
  const CommandResult got = command.Run({"sources", "Shop", "--label", "Release 1"});
  EXPECT_EQ(got.status, 0) << got.err;
  EXPECT_EQ(Read("readme.txt"), "first\n");
}

TEST_F(SourceCommandsTest, SourcesTellsOfALabelThatIsNotThere) {
  const CommandResult result = command.Run({"sources", "Shop", "--label", "Release 1"});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.err, HasSubstr("$/Suite has no label Release 1."));
  EXPECT_FALSE(std::filesystem::exists(command.Source("readme.txt")));
}

TEST_F(SourceCommandsTest, LabelTellsWhatCouldNotBeLabelled) {
  command.Run({"sourceprojects", "Shop", "edit", "1", "--project", "$/Nowhere"});
  const CommandResult result = command.Run({"label", "Shop", "Release 1"});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.err, HasSubstr("$/Nowhere was not labelled: "));
}

TEST_F(SourceCommandsTest, CheckinCommitsUnderTheUsersName) {
  command.root.MakeFile("src/Lib.vbp", "changed\r\n");
  const CommandResult result =
      command.Run({"checkin", "Shop", command.Source("Lib.vbp"), "-m", "A new base address"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(result.out, "Checked in " + command.Source("Lib.vbp") + "\n");
  EXPECT_THAT(
      repository->Log("Suite/Lib.vbp"),
      StartsWith("Bob <bob@example.org>: A new base address\nAnn <ann@example.org>: Three projects\n"));
  EXPECT_EQ(repository->Content("Suite/Lib.vbp"), "changed\r\n");
  EXPECT_THAT(command.Run({"checkouts", "Shop"}).out, HasSubstr("Nothing is checked out."));
}

TEST_F(SourceCommandsTest, CheckinTellsTheReasonOfEachFileAndDoesTheOthers) {
  command.root.MakeFile("src/Lib.vbp", "changed\r\n");
  command.root.MakeFile("src/new.cls", "new\r\n");
  const CommandResult result = command.Run(
      {"checkin", "Shop", command.Source("new.cls"), command.Source("Lib.vbp"), "C:\\elsewhere.txt"});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.err,
              HasSubstr("new.cls was not checked in: File $/Suite\\new.cls not found in SourceSafe"));
  EXPECT_THAT(result.err,
              HasSubstr("elsewhere.txt was not checked in: No matching SourceSafe project found"));
  EXPECT_THAT(repository->Log("Suite/Lib.vbp"), StartsWith("Bob <bob@example.org>: Hearthmake Check in\n"));
}

TEST_F(SourceCommandsTest, CheckoutsListsWhoHoldsWhat) {
  command.root.MakeFile("src/Lib.vbp", "changed\r\n");
  EXPECT_EQ(command.Run({"checkin", "Shop", command.Source("Lib.vbp"), "-m", "half", "--keep"}).status, 0);
  const CommandResult result = command.Run({"checkouts", "Shop"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_THAT(result.out, StartsWith("$/Suite/Lib.vbp  Bob  20"));
  EXPECT_THAT(result.out, HasSubstr("Hearthmake Check out"));
  const json list = json::parse(command.Run({"checkouts", "Shop", "--json"}).out);
  ASSERT_EQ(list.size(), 1U);
  EXPECT_EQ(list[0].at("file"), "$/Suite/Lib.vbp");
  EXPECT_EQ(list[0].at("user"), "Bob");
  // Eve can't check it in.
  command.Run({"sourceprojects", "Shop", "edit", "1", "--user", "Eve"});
  const CommandResult refused = command.Run({"checkin", "Shop", command.Source("Lib.vbp")});
  EXPECT_EQ(refused.status, 1);
  EXPECT_THAT(refused.err, HasSubstr("The file Lib.vbp is checked out to Bob"));
}

TEST_F(SourceCommandsTest, BuildTakesTheSourcesWhenToldTo) {
  EXPECT_THAT(command.Run({"build", "Shop"}).out, Not(HasSubstr("Getting")));
  const CommandResult result = command.Run({"build", "Shop", "--sources"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_THAT(result.out, StartsWith("Getting $/Suite into "));
  EXPECT_THAT(result.out, HasSubstr("[1/3] Compiling Lib"));
  EXPECT_EQ(Read("readme.txt"), "first\n");
}

TEST_F(SourceCommandsTest, BuildTakesTheSourcesByItsSettingUnlessToldNotTo) {
  command.Run({"settings", "TakeLatestFromVSS", "true"});
  EXPECT_THAT(command.Run({"build", "Shop", "--no-sources"}).out, Not(HasSubstr("Getting")));
  EXPECT_THAT(command.Run({"build", "Shop"}).out, HasSubstr("Getting"));
  const CommandResult lines = command.Run({"build", "Shop", "--json"});
  EXPECT_EQ(json::parse(LinesOf(lines.out).front()).at("event"), "GettingLatestVersion");
  command.FailOn("Tool");
  EXPECT_EQ(command.Run({"build", "Shop"}).status, 1);
  EXPECT_THAT(command.Run({"build", "Shop", "--resume"}).out, Not(HasSubstr("Getting")))
      << "the run goes on with the sources that it began with";
  EXPECT_EQ(command.Run({"build", "Shop", "--sources", "--no-sources"}).status, 2);
}

TEST_F(SourceCommandsTest, BuildStopsWhenTheSourcesCanNotBeGot) {
  command.Run({"sourceprojects", "Shop", "edit", "1", "--project", "$/Nowhere"});
  const CommandResult result = command.Run({"build", "Shop", "--sources"});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.err, HasSubstr("$/Nowhere"));
  EXPECT_TRUE(command.Compiled().empty());
}

TEST_F(SourceCommandsTest, BuildWithoutSourceProjectsHasNothingToTake) {
  command.Run({"sourceprojects", "Shop", "remove", "1"});
  EXPECT_EQ(command.Run({"build", "Shop", "--sources"}).status, 0);
}

TEST_F(SourceCommandsTest, ARunChecksProjectFileAndBinaryIn) {
  repository->Write("Suite/Lib.dll", "an old binary");
  repository->CommitAndPush("A binary");
  command.Run({"set", "Shop", "Lib", "CheckInVBPFile", "true"});
  command.Run({"set", "Shop", "Lib", "CheckInBinaryFile", "true"});
  const CommandResult result = command.Run({"build", "Shop", "--sources"});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_THAT(result.out, Not(HasSubstr("Failed")));
  EXPECT_THAT(repository->Log("Suite/Lib.dll"),
              StartsWith("Bob <bob@example.org>: Hearthmake Check in\nAnn <ann@example.org>: A binary\n"));
  EXPECT_EQ(repository->Content("Suite/Lib.dll"), Read("Lib.dll"));
  EXPECT_EQ(repository->Content("Suite/Lib.vbp"), Read("Lib.vbp"));
  EXPECT_THAT(command.Run({"checkouts", "Shop"}).out, HasSubstr("Nothing is checked out."));
}

// The command is caught in the middle of a get by the smallest of pipes, which it fills and waits for.
TEST_F(SourceCommandsTest, CtrlCEndsAGet) {
  constexpr std::size_t kFiles = 1000;
  for (std::size_t i = 0; i < kFiles; ++i) repository->Write("Many/" + std::to_string(i) + ".bas", "x\n");
  repository->CommitAndPush("Many files");
  command.Run(
      {"sourceprojects", "Shop", "edit", "1", "--project", "$/Many", "--folder", command.root.Path("many")});
  int ends[2] = {-1, -1};
  ASSERT_EQ(pipe2(ends, O_CLOEXEC), 0);
  ASSERT_GE(fcntl(ends[1], F_SETPIPE_SZ, 4096), 4096);
  const pid_t child = command.StartInto(ends[1], {"sources", "Shop"});
  close(ends[1]);
  std::string out;
  char buffer[256];
  const auto readSome = [&] {
    const ssize_t count = read(ends[0], buffer, sizeof buffer);
    if (count > 0) out.append(buffer, static_cast<std::size_t>(count));
    return count > 0;
  };
  while (out.find(".bas\n") == std::string::npos && readSome()) continue;
  kill(child, SIGINT);
  while (readSome()) continue;
  close(ends[0]);
  EXPECT_EQ(command.Finish(child).status, 3);
  EXPECT_LT(LinesOf(out).size(), kFiles / 2) << out;
  // The next get brings the rest.
  EXPECT_EQ(command.Run({"sources", "Shop"}).status, 0);
  for (std::size_t i = 0; i < kFiles; ++i)
    ASSERT_EQ(command.root.Content("many/" + std::to_string(i) + ".bas"), "x\n");
}

}  // namespace
}  // namespace hearthmake::host
