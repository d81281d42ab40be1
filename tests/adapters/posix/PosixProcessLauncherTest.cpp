#include "adapters/posix/PosixProcessLauncher.hpp"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <thread>

#include "platform/ProcessLauncherConformance.hpp"
#include "support/PosixFolder.hpp"

namespace hearthmake::posix {
namespace {

using namespace std::chrono_literals;
using support::EnvironmentOverride;
using support::PosixFolder;

constexpr auto kLong = 20s;

std::string Script(const PosixFolder& folder, const std::string& name, const std::string& body) {
  const std::string path = folder.MakeFile(name, "#!/bin/sh\n" + body);
  EXPECT_EQ(chmod(path.c_str(), 0755), 0);
  return path;
}

platform::ProcessLauncherPlayground MakePlayground() {
  auto folder = std::make_shared<PosixFolder>();
  DriveMap drives;
  drives.SetDrive('C', folder->Path());
  Script(*folder, "quick", "exit 3\n");
  Script(*folder, "lasting.exe", "exec sleep 60\n");
  Script(*folder, "echoing", "exec cat\n");
  return {std::make_shared<PosixProcessLauncher>(drives),
          "C:\\quick.exe a b",
          "\"C:\\lasting\"",
          "C:\\missing.exe /x",
          "C:\\echoing.exe",
          folder};
}

}  // namespace
}  // namespace hearthmake::posix

namespace hearthmake::platform {
INSTANTIATE_TEST_SUITE_P(Posix, ProcessLauncherConformance, ::testing::Values(posix::MakePlayground));
}

namespace hearthmake::posix {
namespace {

class PosixProcessLauncherTest : public ::testing::Test {
 protected:
  PosixProcessLauncherTest() {
    m_drives.SetDrive('C', m_folder.MakeFolder("c"));
    m_drives.SetDrive('Z', "/");
  }

  std::string Out() const { return m_folder.Path("out"); }
  std::string Content() const { return m_folder.Content("out"); }
  // Runs a command line to its end; false when it was not started.
  bool Run(PosixProcessLauncher& launcher, const std::string& line) const {
    const auto child = launcher.Start(line);
    return child != nullptr && child->Wait(kLong);
  }
  bool Run(const std::string& line, ProcessLauncherOptions options = {}) const {
    PosixProcessLauncher launcher(m_drives, std::move(options));
    return Run(launcher, line);
  }
  // Waits for a file that a child is to write.
  std::string WaitForContent(const std::string& name) const {
    for (int i = 0; i < 2000 && !m_folder.Content(name).ends_with('\n'); ++i)
      std::this_thread::sleep_for(5ms);
    return m_folder.Content(name);
  }
  static bool IsRunning(pid_t process) {
    // A zombie counts as gone: whoever has to reap it may be slow.
    std::ifstream file("/proc/" + std::to_string(process) + "/stat");
    std::string line;
    return std::getline(file, line) && line.substr(line.rfind(')') + 2, 1) != "Z";
  }

  PosixFolder m_folder;
  DriveMap m_drives;
};

TEST_F(PosixProcessLauncherTest, HandsTheArgumentsOverUnchanged) {
  Script(m_folder, "c/show", "printf '<%s>' \"$@\" > " + Out() + "\n");
  ASSERT_TRUE(Run("C:\\show.exe /make \"C:\\a b\\c.vbp\" /out $HOME '*' \"\" a\\\\\"b c\" \"x\"\"y\""));
  EXPECT_EQ(Content(), "</make><C:\\a b\\c.vbp></out><$HOME><'*'><><a\\b c><x\"y>");
}

TEST_F(PosixProcessLauncherTest, StartsImagesThroughWineWithThePrefix) {
  std::string image(128, '\0');
  image.replace(0, 2, "MZ");
  image[0x3C] = 0x40;
  image.replace(0x40, 2, "PE");
  const std::string program = m_folder.MakeFile("c/vb 98/vb6.exe", image);
  ProcessLauncherOptions options;
  options.wine = Script(m_folder, "wine", "printf '<%s>' \"$WINEPREFIX\" \"$@\" > " + Out() + "\n");
  options.winePrefix = "/my prefix";
  ASSERT_TRUE(Run("C:\\vb 98\\vb6.exe /make \"C:\\a b.vbp\"", options));
  EXPECT_EQ(Content(), "</my prefix><" + program + "></make><C:\\a b.vbp>");

  const EnvironmentOverride path("PATH", m_folder.Path() + ":/usr/bin:/bin");
  options.wine = "wine";
  ASSERT_TRUE(Run("\"C:\\vb 98\\vb6.exe\" 2", options));
  EXPECT_EQ(Content(), "</my prefix><" + program + "><2>");

  options.wine = "no-such-wine";
  EXPECT_FALSE(Run("\"C:\\vb 98\\vb6.exe\"", options));
}

TEST_F(PosixProcessLauncherTest, DoesNotStartTextsAndMissingInterpreters) {
  chmod(m_folder.MakeFile("c/text", "echo hello > " + Out() + "\n").c_str(), 0755);
  chmod(m_folder.MakeFile("c/orphan", "#!/no/such/interpreter\n").c_str(), 0755);
  EXPECT_FALSE(Run("C:\\text"));
  EXPECT_FALSE(Run("C:\\orphan"));
  EXPECT_FALSE(std::filesystem::exists(Out()));
}

TEST_F(PosixProcessLauncherTest, TellsChildrenTheDrivesAndVariables) {
  Script(m_folder, "c/show", "echo \"$HEARTHMAKE_DRIVES|$EXTRA|$OWN\" > " + Out() + "\n");
  const EnvironmentOverride own("OWN", "kept");
  const EnvironmentOverride extra("EXTRA", "replaced");
  const EnvironmentOverride drives("HEARTHMAKE_DRIVES", "old");
  ProcessLauncherOptions options;
  options.environment = {{"EXTRA", "more"}};
  ASSERT_TRUE(Run("C:\\show", options));
  EXPECT_EQ(Content(), m_drives.Serialize() + "|more|kept\n");
}

TEST_F(PosixProcessLauncherTest, FollowsChangesOfTheEnvironment) {
  Script(m_folder, "c/show", "echo \"$OWN\" > " + Out() + "\n");
  PosixProcessLauncher launcher(m_drives);
  const EnvironmentOverride first("OWN", "one");
  ASSERT_TRUE(Run(launcher, "C:\\show"));
  EXPECT_EQ(Content(), "one\n");
  const EnvironmentOverride second("OWN", "two");
  ASSERT_TRUE(Run(launcher, "C:\\show"));
  EXPECT_EQ(Content(), "two\n");
  const EnvironmentOverride third("OWN", std::nullopt);
  ASSERT_TRUE(Run(launcher, "C:\\show"));
  EXPECT_EQ(Content(), "\n");
}

TEST_F(PosixProcessLauncherTest, HidesOutputUnlessItIsToBeKept) {
  Script(m_folder, "c/show",
         "for i in 0 1 2; do readlink /proc/$$/fd/$i; done > " + Out() + "\necho chatter\n");
  ASSERT_TRUE(Run("C:\\show"));
  EXPECT_EQ(Content(), "/dev/null\n" + Out() + "\n/dev/null\n");
  ProcessLauncherOptions options;
  options.keepOutput = true;
  ::testing::internal::CaptureStdout();
  EXPECT_TRUE(Run("C:\\show", options));
  EXPECT_EQ(::testing::internal::GetCapturedStdout(), "chatter\n");
}

TEST_F(PosixProcessLauncherTest, RunsTheChildInTheCurrentFolder) {
  Script(m_folder, "c/show", "pwd -P > " + Out() + "\n");
  const support::CurrentFolderOverride current(m_folder.MakeFolder("here"));
  ASSERT_TRUE(Run("C:\\show"));
  EXPECT_EQ(Content(), std::filesystem::canonical(m_folder.Path("here")).string() + "\n");
}

TEST_F(PosixProcessLauncherTest, GivesTheChildDefaultSignalsAndAGroupOfItsOwn) {
  Script(m_folder, "c/show",
         "grep -E 'Sig(Blk|Ign)' /proc/self/status > " + Out() +
             "\nps -o pid=,pgid= -p $$ 2>/dev/null || cut -d' ' -f1,5 /proc/$$/stat >> " + Out() + "\n");
  sigset_t blocked;
  sigset_t old;
  sigemptyset(&blocked);
  sigaddset(&blocked, SIGUSR1);
  sigaddset(&blocked, SIGTERM);
  pthread_sigmask(SIG_BLOCK, &blocked, &old);
  const auto oldPipe = ::signal(SIGPIPE, SIG_IGN);
  const auto oldInterrupt = ::signal(SIGINT, SIG_IGN);
  EXPECT_TRUE(Run("C:\\show"));
  pthread_sigmask(SIG_SETMASK, &old, nullptr);
  ::signal(SIGPIPE, oldPipe);
  ::signal(SIGINT, oldInterrupt);
  // The two signals that the C library keeps for itself (32 and 33) do not count.
  EXPECT_THAT(Content(), ::testing::ContainsRegex("SigBlk:\t0{16}\nSigIgn:\t0000000[01][08]0000000\n"));
}

TEST_F(PosixProcessLauncherTest, ComesBackFromAWaitWhenASignalComesIn) {
  Script(m_folder, "c/lasting", "exec sleep 60\n");
  PosixProcessLauncher launcher(m_drives);
  const auto child = launcher.Start("C:\\lasting");
  ASSERT_NE(child, nullptr);
  struct sigaction action {};
  struct sigaction old {};
  action.sa_handler = [](int) {};
  sigaction(SIGUSR1, &action, &old);
  std::thread sender([waiter = pthread_self()] {
    std::this_thread::sleep_for(50ms);
    pthread_kill(waiter, SIGUSR1);
  });
  const auto start = std::chrono::steady_clock::now();
  EXPECT_FALSE(child->Wait(30s));
  EXPECT_LT(std::chrono::steady_clock::now() - start, 10s);
  sender.join();
  sigaction(SIGUSR1, &old, nullptr);
  child->Terminate();
}

TEST_F(PosixProcessLauncherTest, TerminatesTheChildWithWhatItStarted) {
  Script(m_folder, "c/parent", "sleep 60 &\necho $! > " + Out() + "\nwait\n");
  PosixProcessLauncher launcher(m_drives);
  const auto child = launcher.Start("C:\\parent");
  ASSERT_NE(child, nullptr);
  const pid_t grandchild = std::stoi(WaitForContent("out"));
  EXPECT_TRUE(IsRunning(grandchild));
  child->Terminate();
  EXPECT_TRUE(child->Wait(0ms));
  for (int i = 0; i < 400 && IsRunning(grandchild); ++i) std::this_thread::sleep_for(5ms);
  EXPECT_FALSE(IsRunning(grandchild));
}

TEST_F(PosixProcessLauncherTest, KillsWhatDoesNotListen) {
  Script(m_folder, "c/deaf",
         "trap '' TERM\n(trap '' TERM; echo ready > " + Out() + "; sleep 60) &\nwait\nsleep 60\n");
  ProcessLauncherOptions options;
  options.grace = 100ms;
  PosixProcessLauncher launcher(m_drives, options);
  const auto child = launcher.Start("C:\\deaf");
  ASSERT_NE(child, nullptr);
  EXPECT_EQ(WaitForContent("out"), "ready\n");
  const auto start = std::chrono::steady_clock::now();
  child->Terminate();
  EXPECT_GE(std::chrono::steady_clock::now() - start, 100ms);
  EXPECT_TRUE(child->Wait(0ms));
}

TEST_F(PosixProcessLauncherTest, TerminatesAllThatRun) {
  Script(m_folder, "c/lasting", "exec sleep 60\n");
  PosixProcessLauncher launcher(m_drives);
  const auto first = launcher.Start("C:\\lasting");
  const auto second = launcher.Start("C:\\lasting");
  ASSERT_NE(first, nullptr);
  ASSERT_NE(second, nullptr);
  launcher.Start("C:\\lasting").reset();
  launcher.TerminateRunning();
  EXPECT_TRUE(first->Wait(0ms));
  EXPECT_TRUE(second->Wait(0ms));
  launcher.TerminateRunning();
}

TEST_F(PosixProcessLauncherTest, TerminatesFromAnotherThreadWhileOneWaits) {
  Script(m_folder, "c/lasting", "exec sleep 60\n");
  PosixProcessLauncher launcher(m_drives);
  const auto child = launcher.Start("C:\\lasting");
  ASSERT_NE(child, nullptr);
  std::thread other([&] {
    std::this_thread::sleep_for(30ms);
    launcher.TerminateRunning();
  });
  EXPECT_TRUE(child->Wait(kLong));
  other.join();
}

TEST_F(PosixProcessLauncherTest, LeavesAChildRunningWhenNobodyHoldsIt) {
  Script(m_folder, "c/slow", "sleep 0.1\necho done > " + Out() + "\n");
  {
    PosixProcessLauncher launcher(m_drives);
    ASSERT_NE(launcher.Start("C:\\slow"), nullptr);
  }
  EXPECT_EQ(WaitForContent("out"), "done\n");
}

TEST_F(PosixProcessLauncherTest, LeavesNoZombiesAndNoDescriptors) {
  Script(m_folder, "c/quick", "exit 0\n");
  PosixProcessLauncher launcher(m_drives);
  const auto descriptors = [] {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
  };
  const auto zombies = [] {
    std::ifstream file("/proc/self/task/" + std::to_string(getpid()) + "/children");
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
  };
  ASSERT_TRUE(Run(launcher, "C:\\quick"));
  const auto before = descriptors();
  const std::string childrenBefore = zombies();
  for (int i = 0; i < 200; ++i) {
    const auto child = launcher.Start("C:\\quick");
    ASSERT_NE(child, nullptr);
    if (i % 2 == 0) {
      ASSERT_TRUE(child->Wait(kLong));
    }
  }
  // The children that nobody waited for go with a later start.
  for (int i = 0; i < 400 && zombies() != childrenBefore; ++i) {
    std::this_thread::sleep_for(5ms);
    EXPECT_EQ(launcher.Start("C:\\missing"), nullptr);
  }
  EXPECT_EQ(zombies(), childrenBefore);
  EXPECT_EQ(descriptors(), before);
}

TEST_F(PosixProcessLauncherTest, SeesTheEndOfAChildWhenSigchldIsIgnored) {
  Script(m_folder, "c/quick", "exit 0\n");
  const auto old = ::signal(SIGCHLD, SIG_IGN);
  EXPECT_TRUE(Run("C:\\quick"));
  ::signal(SIGCHLD, old);
}

TEST_F(PosixProcessLauncherTest, CutsTheLineAtAZeroByte) {
  Script(m_folder, "c/show", "printf '<%s>' \"$@\" > " + Out() + "\n");
  ASSERT_TRUE(Run(std::string("C:\\show a\0b c", 14)));
  EXPECT_EQ(Content(), "<a>");
}

// The real thing: a program of Windows in a real prefix, found in its system folder.
TEST_F(PosixProcessLauncherTest, RunsAWindowsProgramThroughWine) {
  const char* prefix = std::getenv("WINEPREFIX");
  if (prefix == nullptr || !std::filesystem::exists(std::string(prefix) + "/system.reg")) {
    GTEST_SKIP() << "there is no Wine prefix here (WINEPREFIX)";
  }
  const DriveMap drives = DriveMap::FromWinePrefix(prefix);
  const std::string place = m_folder.MakeFolder("with blank");
  ProcessLauncherOptions options;
  options.winePrefix = prefix;
  options.systemFolder = "C:\\windows\\system32";
  PosixProcessLauncher launcher(drives, options);
  const auto child = launcher.Start("cmd.exe /c mkdir \"" + drives.FromPosix(place) + "\\made\"");
  ASSERT_NE(child, nullptr);
  ASSERT_TRUE(child->Wait(60s));
  EXPECT_TRUE(std::filesystem::is_directory(place + "/made"));
}

}  // namespace
}  // namespace hearthmake::posix
