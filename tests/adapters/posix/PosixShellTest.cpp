#include "adapters/posix/PosixShell.hpp"

#include <gtest/gtest.h>

#include <vector>

#include "automation/Error.hpp"
#include "support/ErrorExpect.hpp"

namespace hearthmake::posix {
namespace {

using platform::WindowState;

class Child final : public platform::ChildProcess {
 public:
  bool Wait(std::chrono::milliseconds /*timeout*/) override { return true; }
  void Terminate() override {}
  std::optional<std::int32_t> ExitCode() override { return 0; }
  std::int32_t ProcessId() const override { return 1; }
};

// Starts nothing but says it did, unless told otherwise.
class Launcher final : public platform::ProcessLauncher {
 public:
  std::unique_ptr<platform::ChildProcess> Start(std::string_view commandLine) override {
    started.emplace_back(commandLine);
    return canStart ? std::make_unique<Child>() : nullptr;
  }
  platform::PipedChild StartPiped(std::string_view /*commandLine*/) override { return {}; }
  std::vector<std::string> started;
  bool canStart = true;
};

class PosixShellTest : public testing::Test {
 protected:
  PosixShell Shell() {
    return {launcher, [this](const SelfRegistration& request) {
              requests.push_back((request.isRemoval ? "- " : "+ ") + request.path);
              if (fails) automation::Raise(45, "TypeLibReader", "no type library");
            }};
  }
  std::shared_ptr<Launcher> launcher = std::make_shared<Launcher>();
  std::vector<std::string> requests;
  bool fails = false;
};

using Texts = std::vector<std::string>;

TEST_F(PosixShellTest, StartsPrograms) {
  Shell().Start("C:\\vb6.exe \"C:\\a b.vbp\"", WindowState::Normal);
  EXPECT_EQ(launcher->started, Texts{"C:\\vb6.exe \"C:\\a b.vbp\""});
}

TEST_F(PosixShellTest, NamesAProgramThatCanNotBeStarted) {
  launcher->canStart = false;
  support::ExpectError([&] { Shell().Start("\"C:\\no such\\vb6.exe\" x", WindowState::Normal); }, 53, "Shell",
                       "File not found: C:\\no such\\vb6.exe");
}

TEST_F(PosixShellTest, TakesRegistrationsToTheRegistrar) {
  PosixShell shell = Shell();
  shell.Start("regsvr32.exe /S \"C:\\a b\\Lib.dll\"", WindowState::MinimizedFocus);
  shell.Start("C:\\windows\\system32\\REGSVR32.EXE /s /u C:\\Lib.dll", WindowState::MinimizedFocus);
  shell.Start("\"C:\\a b\\Srv.exe\" /RegServer", WindowState::MinimizedFocus);
  shell.Start("\"C:\\Srv.exe\" /unregserver", WindowState::MinimizedFocus);
  EXPECT_EQ(requests, (Texts{"+ C:\\a b\\Lib.dll", "- C:\\Lib.dll", "+ C:\\a b\\Srv.exe", "- C:\\Srv.exe"}));
  EXPECT_TRUE(launcher->started.empty());
}

TEST_F(PosixShellTest, KeepsTheFailuresOfARegistrationToItselfAsRegsvr32Does) {
  fails = true;
  EXPECT_NO_THROW(Shell().Start("regsvr32.exe /S \"C:\\Lib.dll\"", WindowState::MinimizedFocus));
}

TEST_F(PosixShellTest, WithoutRegistrarStartsThemToo) {
  PosixShell(launcher, nullptr).Start("regsvr32.exe /S \"C:\\Lib.dll\"", WindowState::MinimizedFocus);
  EXPECT_EQ(launcher->started, Texts{"regsvr32.exe /S \"C:\\Lib.dll\""});
}

TEST_F(PosixShellTest, ALineThatIsNoRegistrationIsStartedAsItStands) {
  PosixShell shell = Shell();
  const Texts lines = {"regsvr32.exe /S", "C:\\Srv.exe /RegServer now", "C:\\x.exe RegServer"};
  for (const std::string& line : lines) shell.Start(line, WindowState::Normal);
  EXPECT_EQ(launcher->started, lines);
}

}  // namespace
}  // namespace hearthmake::posix
