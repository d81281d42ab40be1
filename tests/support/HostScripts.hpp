#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace hearthmake::support {

// What a script of tests/host/scripts says that it prints; see the README there.
struct PrintedLine {
  int line = 0;
  std::string text;
};

inline std::vector<PrintedLine> ReadExpectations(const std::filesystem::path& script) {
  static const std::string kMark = "' expect: ";
  std::vector<PrintedLine> expectations;
  std::ifstream file(script);
  int number = 0;
  for (std::string line; std::getline(file, line);) {
    ++number;
    const std::size_t mark = line.find(kMark);
    if (mark != std::string::npos) expectations.push_back({number, line.substr(mark + kMark.size())});
  }
  return expectations;
}

// Whether a script says in its first line that it needs something beside the library: "event handlers",
// "git", "component services".
inline bool Needs(const std::filesystem::path& script, const std::string& what) {
  std::string first;
  std::ifstream file(script);
  std::getline(file, first);
  return first.starts_with("' needs ") && first.find(what) != std::string::npos;
}

inline void ExpectPrinted(const std::filesystem::path& script, const std::vector<std::string>& printed) {
  const auto expected = ReadExpectations(script);
  ASSERT_FALSE(expected.empty()) << script << " expects nothing";
  for (std::size_t i = 0; i < expected.size(); ++i) {
    const std::string got = i < printed.size() ? printed[i] : "(nothing more)";
    ASSERT_EQ(got, expected[i].text) << script.string() << ":" << expected[i].line;
  }
  EXPECT_EQ(printed.size(), expected.size())
      << "printed beyond the last expectation: "
      << (printed.size() > expected.size() ? printed[expected.size()] : "");
}

// Makes a test of each script.
template <class Test>
bool RegisterHostScripts() {
  for (const auto& entry : std::filesystem::directory_iterator(SOURCE_DIRECTORY "/tests/host/scripts")) {
    if (entry.path().extension() != ".vbs") continue;
    testing::RegisterTest("HostScript", entry.path().stem().string().c_str(), nullptr, nullptr,
                          entry.path().string().c_str(), 1,
                          [path = entry.path()]() -> testing::Test* { return new Test(path); });
  }
  return true;
}

}  // namespace hearthmake::support
