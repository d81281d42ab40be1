// The scripts of tests/host/scripts, run by the real command; see the README there.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>

#include "support/HostCommand.hpp"
#include "support/HostScripts.hpp"

namespace hearthmake::host {
namespace {

namespace fs = std::filesystem;

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
    support::ExpectPrinted(m_script, support::LinesOf(result.out));
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

  fs::path m_script;
};

const bool kRegistered = support::RegisterHostScripts<HostScript>();

TEST(HostScripts, AreFound) { EXPECT_TRUE(kRegistered); }

}  // namespace
}  // namespace hearthmake::host
