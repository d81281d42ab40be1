// The host scripts of tests/host/scripts through COM: the system's own script host over the registered
// server. See the README there.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "support/ComProcess.hpp"
#include "support/ComServer.hpp"

namespace hearthmake::com {
namespace {

namespace fs = std::filesystem;

constexpr const char* kMark = "' expect: ";

constexpr const char* kNeedsHandlers = "' needs event handlers";

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

std::string Contents(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<std::string> Expected(const fs::path& script) {
  std::vector<std::string> expected;
  for (const std::string& line : Lines(Contents(script))) {
    const std::size_t mark = line.find(kMark);
    if (mark != std::string::npos) expected.push_back(line.substr(mark + std::string(kMark).size()));
  }
  return expected;
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
    EXPECT_EQ(Lines(WithClassNames(result.output)), Expected(m_script));
    EXPECT_EQ(result.status, 0U);
  }

 private:
  std::string ReasonToSkip() const {
    const std::string name = m_script.stem().string();
    if (Lines(Contents(m_script)).front() == kNeedsHandlers) {
      return "needs handlers of events by prefix";
    }
    return IsWine() && kBeyondWine.contains(name) ? kBeyondWine.at(name) : "";
  }

  // Wine's TypeName tells the interface of an object where Windows' tells its class.
  static std::string WithClassNames(const std::string& text) {
    return IsWine() ? std::regex_replace(text, std::regex("(^|\\s)_([A-Z])"), "$1$2") : text;
  }

  fs::path m_script;
};

const bool kRegistered = [] {
  for (const auto& entry : fs::directory_iterator(SOURCE_DIRECTORY "/tests/host/scripts")) {
    if (entry.path().extension() != ".vbs") continue;
    testing::RegisterTest("HostScript", entry.path().stem().string().c_str(), nullptr, nullptr, __FILE__, 1,
                          [path = entry.path()]() -> testing::Test* { return new HostScript(path); });
  }
  return true;
}();

TEST(HostScripts, AreFound) { EXPECT_TRUE(kRegistered); }

}  // namespace
}  // namespace hearthmake::com
