#include "adapters/win32/Win32Shell.hpp"

#include <gtest/gtest.h>
#include <windows.h>

#include "support/ErrorExpect.hpp"
#include "support/Win32Folder.hpp"

namespace hearthmake::win32 {
namespace {

using platform::WindowState;

TEST(Win32Shell, StartsProgramsAndDoesNotWait) {
  const support::Win32Folder folder;
  const std::string made = folder.Path("made");
  Win32Shell().Start("cmd.exe /c mkdir \"" + made + "\"", WindowState::MinimizedFocus);
  for (int i = 0; i < 1000 && !std::filesystem::is_directory(made); ++i) Sleep(10);
  EXPECT_TRUE(std::filesystem::is_directory(made));
}

TEST(Win32Shell, NamesAProgramThatCanNotBeStarted) {
  support::ExpectError([] { Win32Shell().Start("\"C:\\no such\\vb6.exe\" x", WindowState::Normal); }, 53,
                       "Shell", "File not found: C:\\no such\\vb6.exe");
  support::ExpectError([] { Win32Shell().Start("  C:\\vb6.exe x", WindowState::Normal); }, 53, "Shell",
                       "File not found: C:\\vb6.exe");
}

}  // namespace
}  // namespace hearthmake::win32
