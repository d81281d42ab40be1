// The scripts of tests/host/scripts, run by the command of Windows; see the README there.

#include <windows.h>

#include <objbase.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "adapters/win32/RegistryKey.hpp"
#include "adapters/win32/Win32ProcessLauncher.hpp"
#include "support/HostScripts.hpp"
#include "support/Win32Folder.hpp"

namespace hearthmake::host {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

std::string DosPath(std::string path) {
  std::replace(path.begin(), path.end(), '/', '\\');
  return path;
}

std::string Quoted(const std::string& text) { return '"' + text + '"'; }

std::vector<std::string> LinesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) {
    if (line.ends_with('\r')) line.pop_back();
    lines.push_back(line);
  }
  return lines;
}

bool HasClass(const wchar_t* progId) {
  CLSID id = {};
  return SUCCEEDED(CLSIDFromProgID(progId, &id));
}

constexpr auto kLongest = 120s;

// What a child writes until it has ended. Not until its pipes have: under Wine the first program may start
// the desktop, which then holds them too.
void Follow(platform::PipedChild& child, std::string& out, std::string& err) {
  const auto deadline = std::chrono::steady_clock::now() + kLongest;
  const auto take = [](platform::InputStream& stream, std::string& text) {
    char buffer[4096];
    const auto count = stream.Read(buffer, sizeof buffer, 10ms);
    text.append(buffer, count.value_or(0));
    return count.value_or(0) > 0;
  };
  for (bool isMore = true, hasEnded = false; isMore || !hasEnded;) {
    hasEnded = child.process->Wait(0ms);
    isMore = take(*child.output, out);
    isMore = take(*child.error, err) || isMore;
    if (std::chrono::steady_clock::now() > deadline) return child.process->Terminate();
  }
}

class HostScript : public testing::Test {
 public:
  explicit HostScript(fs::path script) : m_script(std::move(script)) {}

  void TestBody() override {
    if (support::Needs(m_script, "git")) GTEST_SKIP() << "needs a git of this system";
    if (support::Needs(m_script, "component services") && !HasClass(L"COMAdmin.COMAdminCatalog"))
      GTEST_SKIP() << "this machine has no component services";
    win32::RegistryKey::Remove(HKEY_CURRENT_USER, "Software\\VB and VBA Program Settings\\Hearthmake", 0);
    const support::Win32Folder folder;
    CopySuite(folder);
    win32::Win32ProcessLauncher launcher;
    auto child = launcher.StartPiped(
        Quoted(DosPath(COMMAND_FILE)) + " --data " + Quoted(folder.Path("data")) + " script " +
        Quoted(DosPath(m_script.string())) + ' ' + Quoted(DosPath(COMPILER_FILE)) + ' ' +
        Quoted(folder.Path("work")) + ' ' + Quoted(DosPath(STANDIN_FILE)));
    ASSERT_NE(child.process, nullptr);
    child.input.reset();
    std::string out;
    std::string err;
    Follow(child, out, err);
    EXPECT_EQ(child.process->ExitCode(), 0);
    EXPECT_EQ(err, "");
    support::ExpectPrinted(m_script, LinesOf(out));
  }

 private:
  // The example suite, and the output folders that its projects name.
  static void CopySuite(const support::Win32Folder& folder) {
    const fs::path suite = folder.MakeFolder("work\\suite");
    fs::copy(SOURCE_DIRECTORY "/examples/suite", suite,
             fs::copy_options::recursive | fs::copy_options::overwrite_existing);
    fs::create_directories(suite / "bin");
    fs::remove_all("C:\\Suite");
    fs::create_directories("C:\\Suite\\Bin");
  }

  fs::path m_script;
};

const bool kRegistered = support::RegisterHostScripts<HostScript>();

TEST(HostScripts, AreFound) { EXPECT_TRUE(kRegistered); }

}  // namespace
}  // namespace hearthmake::host
