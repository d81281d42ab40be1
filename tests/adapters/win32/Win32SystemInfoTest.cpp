#include "adapters/win32/Win32SystemInfo.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

namespace hearthmake::win32 {
namespace {

TEST(Win32SystemInfo, TellsTheFolders) {
  Win32SystemInfo info;
  EXPECT_TRUE(info.TemporaryFolder().ends_with('\\'));
  EXPECT_TRUE(std::filesystem::is_directory(info.TemporaryFolder()));
  EXPECT_FALSE(info.SystemFolder().ends_with('\\'));
  EXPECT_TRUE(std::filesystem::exists(info.SystemFolder() + "\\kernel32.dll"));
  EXPECT_TRUE(std::filesystem::exists(info.ComponentFolder() + "\\win32_tests.exe"));
  EXPECT_EQ(Win32SystemInfo("D:\\Data\\").ComponentFolder(), "D:\\Data");
  EXPECT_EQ(Win32SystemInfo("D:\\").ComponentFolder(), "D:\\");
}

TEST(Win32SystemInfo, KnowsTheSystemsVersion) {
  const std::int32_t version = Win32SystemInfo().MajorVersion();
  EXPECT_GE(version, 5);
  EXPECT_LE(version, 20);
}

TEST(Win32SystemInfo, FindsEnvironmentVariablesWithoutRegardToCase) {
  Win32SystemInfo info;
  const std::string name = "HEARTHMAKE_TEST_NAME";
  info.SetEnvironmentVariable(name, "Größe = €");
  EXPECT_EQ(info.EnvironmentVariable("hearthmake_Test_name"), "Größe = €");
  const auto all = info.Environment();
  EXPECT_NE(std::find(all.begin(), all.end(), name + "=Größe = €"), all.end());
  EXPECT_TRUE(std::none_of(all.begin(), all.end(), [](const auto& each) { return each.starts_with('='); }));
  info.SetEnvironmentVariable(name, "");
  EXPECT_EQ(info.EnvironmentVariable(name).value_or(""), "");
  info.SetEnvironmentVariable(name, std::nullopt);
  EXPECT_EQ(info.EnvironmentVariable(name), std::nullopt);
  EXPECT_EQ(info.EnvironmentVariable(""), std::nullopt);
  EXPECT_EQ(info.EnvironmentVariable("A=B"), std::nullopt);
  info.SetEnvironmentVariable(name, std::string(5000, 'x'));
  EXPECT_EQ(info.EnvironmentVariable(name).value_or("").size(), 5000U);
  info.SetEnvironmentVariable(name, std::nullopt);
}

TEST(Win32SystemInfo, NamesTheComputerAndTheUser) {
  Win32SystemInfo info;
  EXPECT_FALSE(info.ComputerName().empty());
  EXPECT_FALSE(info.UserName().empty());
  EXPECT_EQ(info.UserName().find('\0'), std::string::npos);
}

}  // namespace
}  // namespace hearthmake::win32
