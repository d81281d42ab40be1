#include "foundation/modExecute.hpp"

#include <gtest/gtest.h>

#include <filesystem>

#include "foundation/Apartment.hpp"
#include "support/ErrorExpect.hpp"
#include "support/Workbench.hpp"

namespace hearthmake {
namespace {

using automation::BuildErrors;
using support::ErrorOf;
using support::ExpectError;
using support::Workbench;

// A program as a shell script; what it prints goes to the end of C:\out.txt.
void MakeProgram(const Workbench& bench, const std::string& path, const std::string& script) {
  bench.WriteBytes(path, "#!/bin/sh\nexec >> '" + bench.root.Path("drive_c/out.txt") + "'\n" + script + "\n");
  std::filesystem::permissions(bench.Posix(path), std::filesystem::perms::owner_all);
}

std::string Output(const Workbench& bench) {
  return bench.files->FileExists("C:\\out.txt") ? bench.Read("C:\\out.txt") : "";
}

TEST(modExecute, ReturnsWhenTheProcessHasEnded) {
  const Workbench bench;
  MakeProgram(bench, "C:\\tool.exe", "sleep 0.2\necho done");
  modExecute::CmdExec("C:\\tool.exe");
  EXPECT_EQ(Output(bench), "done\n");
}

TEST(modExecute, DeliversTheHostsEventsWhileItWaits) {
  const Workbench bench;
  MakeProgram(bench, "C:\\tool.exe", "sleep 0.4");
  modExecute::CmdExec("C:\\tool.exe");
  EXPECT_GE(bench.pump->delivered, 3);
}

TEST(modExecute, DeliversEventsAfterEveryPollOfAProcessThatEndsAtOnceToo) {
  const Workbench bench;
  MakeProgram(bench, "C:\\tool.exe", ":");
  modExecute::CmdExec("C:\\tool.exe");
  EXPECT_GE(bench.pump->delivered, 1);
}

TEST(modExecute, HandsTheCommandLineOnExactlyAsGiven) {
  const Workbench bench;
  MakeProgram(bench, "C:\\tool.exe", "for a in \"$@\"; do echo \"[$a]\"; done");
  const std::string command = "C:\\tool.exe  one \"two words\" $HOME;ls > x | y  *";
  modExecute::CmdExec(command);
  EXPECT_EQ(bench.launcher->commands, std::vector<std::string>{command});
  EXPECT_EQ(Output(bench), "[one]\n[two words]\n[$HOME;ls]\n[>]\n[x]\n[|]\n[y]\n[*]\n")
      << "no shell in between";
}

TEST(modExecute, DoesNotLookAtTheExitStatus) {
  const Workbench bench;
  MakeProgram(bench, "C:\\tool.exe", "exit 7");
  modExecute::CmdExec("C:\\tool.exe");
  MakeProgram(bench, "C:\\tool.exe", "kill -9 $$");
  modExecute::CmdExec("C:\\tool.exe");
  EXPECT_EQ(bench.launcher->commands.size(), 2U);
}

TEST(modExecute, AMissingProgramIsNamedByTheError) {
  const Workbench bench;
  ExpectError([] { modExecute::CmdExec("C:\\gone\\tool.exe /make \"C:\\a b.vbp\""); },
              BuildErrors::beNoProcessStarted, "modExecute.CmdExec",
              "Failed to start the following process: C:\\gone\\tool.exe /make \"C:\\a b.vbp\"");
  EXPECT_EQ(bench.pump->delivered, 0);
}

TEST(modExecute, AnEmptyCommandStartsNothing) {
  const Workbench bench;
  ExpectError([] { modExecute::CmdExec(""); }, BuildErrors::beNoProcessStarted, "modExecute.CmdExec",
              "Failed to start the following process: ");
}

TEST(modExecute, AFileThatIsNoProgramStartsNothing) {
  const Workbench bench;
  bench.WriteBytes("C:\\tool.exe", "neither image nor script");
  EXPECT_EQ(ErrorOf([] { modExecute::CmdExec("C:\\tool.exe"); }).Number(),
            static_cast<std::int32_t>(BuildErrors::beNoProcessStarted));
}

class Facts final : public platform::SystemInfo {
 public:
  std::string TemporaryFolder() override { return "C:\\temp\\"; }
  std::string SystemFolder() override { return folder; }
  std::string ComponentFolder() override { return "C:\\data"; }
  std::int32_t MajorVersion() override { return 4; }
  std::optional<std::string> EnvironmentVariable(std::string_view /*name*/) override { return std::nullopt; }
  std::vector<std::string> Environment() override { return {}; }
  void SetEnvironmentVariable(std::string_view, const std::optional<std::string>&) override {}
  std::string ComputerName() override { return "BOX"; }
  std::string UserName() override { return "me"; }
  std::string folder;
};

TEST(modExecute, TheSystemFolderEndsInOneBackslash) {
  const Workbench bench;
  EXPECT_EQ(modExecute::SystemFolder(), "C:\\windows\\system32\\");
  auto ports = bench.apartment->Ports();
  const auto facts = std::make_shared<Facts>();
  ports.system = facts;
  const Apartment apartment(ports);
  facts->folder = "C:\\";
  EXPECT_EQ(modExecute::SystemFolder(), "C:\\");
  facts->folder = "";
  EXPECT_EQ(modExecute::SystemFolder(), "");
}

TEST(modExecute, TheMajorVersionIsTheSystems) {
  const Workbench bench(4);
  EXPECT_EQ(modExecute::MajorVersion(), 4);
}

TEST(modExecute, StopsMtsByItsThreeCommandsAndWaitsSevenSeconds) {
  const Workbench bench(4);
  MakeProgram(bench, "C:\\tools\\net.exe", "echo net $*");
  MakeProgram(bench, "C:\\tools\\mtxstop.exe", "echo mtxstop $*");
  const support::EnvironmentOverride path("PATH", bench.Posix("C:\\tools") + ":/usr/bin:/bin");
  modExecute::StopMTS();
  EXPECT_EQ(bench.launcher->commands,
            (std::vector<std::string>{"net stop server /Y", "mtxstop", "net stop msdtc"}));
  EXPECT_EQ(Output(bench), "net stop server /Y\nmtxstop\nnet stop msdtc\n");
  EXPECT_EQ(bench.clock->slept, std::chrono::milliseconds(7000));
}

TEST(modExecute, StoppingMtsWithoutItsCommandsIsAnErrorWithoutPause) {
  const Workbench bench(4);
  const support::EnvironmentOverride path("PATH", bench.Posix("C:\\temp"));
  ExpectError([] { modExecute::StopMTS(); }, BuildErrors::beNoProcessStarted, "modExecute.CmdExec",
              "Failed to start the following process: net stop server /Y");
  EXPECT_EQ(bench.clock->slept, std::chrono::milliseconds(0));
}

}  // namespace
}  // namespace hearthmake
