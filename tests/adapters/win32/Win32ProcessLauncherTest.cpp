#include "adapters/win32/Win32ProcessLauncher.hpp"

#include <gtest/gtest.h>

#include <thread>

#include "adapters/win32/Handle.hpp"
#include "platform/ProcessLauncherConformance.hpp"
#include "support/Win32Folder.hpp"

namespace hearthmake::win32 {
namespace {

using namespace std::chrono_literals;

constexpr auto kLong = 20s;

// The helper that stands beside the test program.
std::string Child(const std::string& arguments) {
  char path[MAX_PATH];
  const std::string_view own(path, GetModuleFileNameA(nullptr, path, sizeof path));
  return '"' + std::string(own.substr(0, own.rfind('\\') + 1)) + "win32_child.exe\" " + arguments;
}

platform::ProcessLauncherPlayground MakePlayground() {
  return {std::make_shared<Win32ProcessLauncher>(),
          Child("quick"),
          Child("lasting"),
          "C:\\missing.exe /x",
          Child("echo"),
          nullptr};
}

class Win32ProcessLauncherTest : public testing::Test {
 protected:
  // Waits for a file that a child is to write.
  std::string WaitForContent(const std::string& name) const {
    for (int i = 0; i < 2000 && !m_folder.Content(name).ends_with('\n'); ++i)
      std::this_thread::sleep_for(5ms);
    return m_folder.Content(name);
  }

  support::Win32Folder m_folder;
  Win32ProcessLauncher m_launcher;
};

TEST_F(Win32ProcessLauncherTest, HandsTheCommandLineOverUnchanged) {
  const auto child = m_launcher.Start(
      Child("show \"" + m_folder.Path("out") + "\" /make \"C:\\a b\\c.vbp\" /out %TEMP% '*' \"\""));
  ASSERT_NE(child, nullptr);
  ASSERT_TRUE(child->Wait(kLong));
  EXPECT_EQ(m_folder.Content("out"), "</make><C:\\a b\\c.vbp></out><%TEMP%><'*'><>");
}

TEST_F(Win32ProcessLauncherTest, TerminatesTheChildWithWhatItStarted) {
  const std::string inner = Child("lasting");
  const auto child = m_launcher.Start(Child("start \"" + m_folder.Path("id") + "\" \"" +
                                            inner.substr(1, inner.rfind('"') - 1) + " lasting\""));
  ASSERT_NE(child, nullptr);
  const std::string id = WaitForContent("id");
  ASSERT_FALSE(id.empty());
  const Handle grandchild(OpenProcess(SYNCHRONIZE, FALSE, static_cast<DWORD>(std::stoul(id))));
  ASSERT_TRUE(grandchild);
  EXPECT_EQ(WaitForSingleObject(grandchild.Get(), 0), DWORD{WAIT_TIMEOUT});
  child->Terminate();
  EXPECT_TRUE(child->Wait(0ms));
  EXPECT_EQ(WaitForSingleObject(grandchild.Get(), 5000), WAIT_OBJECT_0);
}

TEST_F(Win32ProcessLauncherTest, TerminatesAllThatRun) {
  const auto first = m_launcher.Start(Child("lasting"));
  const auto second = m_launcher.Start(Child("lasting"));
  ASSERT_TRUE(first && second);
  std::thread other([&] { m_launcher.TerminateRunning(); });
  EXPECT_TRUE(first->Wait(kLong));
  other.join();
  EXPECT_TRUE(second->Wait(0ms));
  m_launcher.TerminateRunning();
}

TEST_F(Win32ProcessLauncherTest, LeavesAChildRunningWhenNobodyHoldsIt) {
  DWORD id = 0;
  {
    const auto child = m_launcher.Start(Child("lasting"));
    ASSERT_NE(child, nullptr);
    id = static_cast<DWORD>(child->ProcessId());
  }
  m_launcher.TerminateRunning();
  const Handle process(OpenProcess(SYNCHRONIZE | PROCESS_TERMINATE, FALSE, id));
  ASSERT_TRUE(process);
  EXPECT_EQ(WaitForSingleObject(process.Get(), 50), DWORD{WAIT_TIMEOUT});
  TerminateProcess(process.Get(), 0);
}

TEST_F(Win32ProcessLauncherTest, ComesBackFromAWaitWhenAMessageComes) {
  const auto child = m_launcher.Start(Child("lasting"));
  ASSERT_NE(child, nullptr);
  MSG message{};
  PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE);  // makes the queue of this thread
  std::thread other([waiter = GetCurrentThreadId()] {
    std::this_thread::sleep_for(100ms);
    PostThreadMessageW(waiter, WM_APP, 0, 0);
  });
  const auto start = std::chrono::steady_clock::now();
  EXPECT_FALSE(child->Wait(30s));
  EXPECT_LT(std::chrono::steady_clock::now() - start, 10s);
  other.join();
  child->Terminate();
}

TEST_F(Win32ProcessLauncherTest, PipesMoreThanAPipeHolds) {
  const auto child = m_launcher.StartPiped(Child("echo"));
  ASSERT_NE(child.process, nullptr);
  std::string sent(300'000, 'x');
  for (std::size_t i = 0; i < sent.size(); i += 97) sent[i] = static_cast<char>('a' + i % 26);
  std::string_view rest = sent;
  std::string got;
  char buffer[8192];
  // The child writes what it reads: who only wrote would wait for ever.
  for (int i = 0; i < 100'000 && got.size() < sent.size(); ++i) {
    if (!rest.empty()) rest.remove_prefix(child.input->WriteSome(rest, 1ms));
    if (const auto count = child.output->Read(buffer, sizeof buffer, 1ms)) got.append(buffer, *count);
  }
  EXPECT_TRUE(got == sent);
}

}  // namespace
}  // namespace hearthmake::win32

namespace hearthmake::platform {
INSTANTIATE_TEST_SUITE_P(Win32, ProcessLauncherConformance, ::testing::Values(win32::MakePlayground));
}
