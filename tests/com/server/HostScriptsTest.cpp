// The host scripts of tests/host/scripts through COM: the system's own script host over the registered
// server. See the README there.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "support/ComProcess.hpp"
#include "support/ComServer.hpp"

namespace hearthmake::com {
namespace {

namespace fs = std::filesystem;

constexpr const char* kMark = "' expect: ";

// Scripts that ask for what only another host has, and what that is.
const std::map<std::string, std::string> kElsewhere = {
    {"run_with_events", "needs WScript.CreateObject with a prefix for events"},
    {"edge_cases_of_a_run", "needs WScript.CreateObject with a prefix for events"},
    {"whole_host", "needs the stand-in compiler, which is built for Linux"},
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
    const auto elsewhere = kElsewhere.find(m_script.stem().string());
    if (elsewhere != kElsewhere.end()) GTEST_SKIP() << elsewhere->second;
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
    EXPECT_EQ(Lines(result.output), Expected(m_script));
    EXPECT_EQ(result.status, 0U);
  }

 private:
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
