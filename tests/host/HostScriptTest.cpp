// The scripts of tests/host/scripts, run by the real command; see the README there.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "support/HostCommand.hpp"

namespace hearthmake::host {
namespace {

namespace fs = std::filesystem;

constexpr const char* kMark = "' expect: ";

struct Expectation {
  int line = 0;
  std::string text;
};

std::vector<Expectation> ReadExpectations(const fs::path& script) {
  std::vector<Expectation> expectations;
  std::ifstream file(script);
  int number = 0;
  for (std::string line; std::getline(file, line);) {
    ++number;
    const std::size_t mark = line.find(kMark);
    if (mark != std::string::npos)
      expectations.push_back({number, line.substr(mark + std::string(kMark).size())});
  }
  return expectations;
}

class HostScript : public testing::Test {
 public:
  explicit HostScript(fs::path script) : m_script(std::move(script)) {}

  void TestBody() override {
    support::HostCommand command;
    command.root.MakeFolder("work");
    CopySuite(command);
    command.FailOn("Bad");
    const auto result = command.Run({"script", m_script.string(), "Z:" + DosPath(command.root.Path("vb6")),
                                     "Z:" + DosPath(command.root.Path("work")),
                                     "Z:" + DosPath(BINARY_DIRECTORY "/tools/vb6/vb6")});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.err, "");
    Compare(support::LinesOf(result.out));
  }

 private:
  // The example suite, and the output folders that its projects name.
  static void CopySuite(const support::HostCommand& command) {
    const fs::path suite = command.root.Path("work/suite");
    fs::copy(SOURCE_DIRECTORY "/examples/suite", suite, fs::copy_options::recursive);
    fs::create_directories(suite / "bin");
    fs::create_directories(command.root.Path("data/drive_c/Suite/Bin"));
  }

  static std::string DosPath(std::string path) {
    std::replace(path.begin(), path.end(), '/', '\\');
    return path;
  }

  void Compare(const std::vector<std::string>& printed) const {
    const auto expected = ReadExpectations(m_script);
    ASSERT_FALSE(expected.empty()) << m_script << " expects nothing";
    for (std::size_t i = 0; i < expected.size(); ++i) {
      const std::string got = i < printed.size() ? printed[i] : "(nothing more)";
      ASSERT_EQ(got, expected[i].text) << m_script.string() << ":" << expected[i].line;
    }
    EXPECT_EQ(printed.size(), expected.size())
        << "printed beyond the last expectation: "
        << (printed.size() > expected.size() ? printed[expected.size()] : "");
  }

  fs::path m_script;
};

const bool kRegistered = [] {
  for (const auto& entry : fs::directory_iterator(SOURCE_DIRECTORY "/tests/host/scripts")) {
    if (entry.path().extension() != ".vbs") continue;
    testing::RegisterTest("HostScript", entry.path().stem().c_str(), nullptr, nullptr, entry.path().c_str(),
                          1, [path = entry.path()]() -> testing::Test* { return new HostScript(path); });
  }
  return true;
}();

TEST(HostScripts, AreFound) { EXPECT_TRUE(kRegistered); }

}  // namespace
}  // namespace hearthmake::host
