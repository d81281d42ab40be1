// The host scripts of tests/host/scripts through COM: the system's own script host over the registered
// server. See the README there.

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "support/ComProcess.hpp"
#include "support/ComServer.hpp"
#include "support/HostScripts.hpp"

namespace hearthmake::com {
namespace {

namespace fs = std::filesystem;

bool IsWine() { return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr; }

// What scripts ask for that Wine's VBScript doesn't have.
const std::map<std::string, std::string> kBeyondWine = {
    {"scripts_execute", "Wine's VBScript has no Split"},
    {"scripts_stored", "Wine's VBScript has no ChrW"},
};

std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) {
    while (!line.empty() && line.back() == '\r') line.pop_back();
    lines.push_back(line);
  }
  return lines;
}

class HostScript : public testing::Test {
 public:
  explicit HostScript(fs::path script) : m_script(std::move(script)) {}

  void TestBody() override {
    const std::string reason = ReasonToSkip();
    if (!reason.empty()) GTEST_SKIP() << reason;
    const Server server;
    // Options that an earlier test left.
    RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\VB and VBA Program Settings\\Hearthmake");
    const fs::path work = server.Folder() / "work";
    fs::create_directories(work);
    const std::string path = server.Path().string();
    ASSERT_EQ(RunProcess(win32::ToWide("regsvr32.exe /s \"" + path + "\"")).status, 0U);
    const auto result = RunProcess(win32::ToWide("cscript.exe //nologo \"" + m_script.string() + "\" \"" +
                                                 COMPILER_FILE + "\" \"" + work.string() + "\""));
    EXPECT_EQ(RunProcess(win32::ToWide("regsvr32.exe /s /u \"" + path + "\"")).status, 0U);
    std::error_code ignored;
    fs::remove_all(work, ignored);
    support::ExpectPrinted(m_script, Lines(WithClassNames(result.output)));
    EXPECT_EQ(result.status, 0U);
  }

 private:
  std::string ReasonToSkip() const {
    const std::string name = m_script.stem().string();
    if (support::Needs(m_script, "event handlers")) return "needs handlers of events by prefix";
    return IsWine() && kBeyondWine.contains(name) ? kBeyondWine.at(name) : "";
  }

  // Wine's TypeName tells the interface of an object where Windows' tells its class.
  static std::string WithClassNames(const std::string& text) {
    return IsWine() ? std::regex_replace(text, std::regex("(^|\\s)_([A-Z])"), "$1$2") : text;
  }

  fs::path m_script;
};

const bool kRegistered = support::RegisterHostScripts<HostScript>();

TEST(HostScripts, AreFound) { EXPECT_TRUE(kRegistered); }

}  // namespace
}  // namespace hearthmake::com
