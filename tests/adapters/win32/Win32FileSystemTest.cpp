#include "adapters/win32/Win32FileSystem.hpp"

#include <windows.h>

#include <gtest/gtest.h>

#include "adapters/win32/Handle.hpp"
#include "adapters/win32/WideText.hpp"
#include "automation/Error.hpp"
#include "platform/FileSystemConformance.hpp"
#include "support/Win32Folder.hpp"

namespace hearthmake::platform {
namespace {

FileSystemPlayground MakePlayground(bool wronglyCased) {
  auto folder = std::make_shared<support::Win32Folder>();
  folder->MakeFolder("Play Ground ä");
  return {std::make_shared<win32::Win32FileSystem>(),
          folder->Path(wronglyCased ? "PLAY GROUND Ä" : "Play Ground ä"), folder};
}

INSTANTIATE_TEST_SUITE_P(Win32, FileSystemConformance,
                         ::testing::Values([] { return MakePlayground(false); }));
INSTANTIATE_TEST_SUITE_P(Win32WronglyCased, FileSystemConformance,
                         ::testing::Values([] { return MakePlayground(true); }));

}  // namespace
}  // namespace hearthmake::platform

namespace hearthmake::win32 {
namespace {

using automation::RuntimeError;

class Win32FileSystemTest : public testing::Test {
 protected:
  void ExpectFailure(RuntimeError expected, const std::function<void()>& call) {
    try {
      call();
      ADD_FAILURE() << "no failure";
    } catch (const automation::Error& error) {
      EXPECT_EQ(error.Number(), static_cast<std::int32_t>(expected)) << error.Description();
    }
  }

  support::Win32Folder m_folder;
  Win32FileSystem m_files;
};

TEST_F(Win32FileSystemTest, GoesBeyondTheOldLimitOfPaths) {
  std::string deep = m_folder.Path();
  while (deep.size() < 400) deep += "\\a folder with a long name";
  m_files.CreateFolders(deep);
  const std::string file = deep + "\\Lib.vbp";
  m_files.Replace(file, "one");
  m_files.Replace(file, "two");
  m_files.Append(file, "!");
  EXPECT_EQ(m_files.Read(file), "two!");
  EXPECT_TRUE(m_files.FileExists(file));
  EXPECT_EQ(m_files.List(deep).size(), 1U);
  m_files.Copy(file, deep + "\\copy");
  m_files.Rename(deep + "\\copy", deep + "\\renamed");
  m_files.Remove(deep + "\\renamed");
  m_files.Remove(file);
  m_files.RemoveFolder(deep);
}

TEST_F(Win32FileSystemTest, DevicesAreNoFiles) {
  EXPECT_FALSE(m_files.FolderExists("nul"));
  EXPECT_EQ(m_files.Stamp("nul").size, -1);
  ExpectFailure(RuntimeError::PathFileAccess, [&] { m_files.Read("nul"); });
  ExpectFailure(RuntimeError::PathFileAccess, [&] { m_files.Append("nul", "x"); });
}

TEST_F(Win32FileSystemTest, AFileThatSomebodyKeepsToHimselfIsRefused) {
  const std::string path = m_folder.MakeFile("held", "x");
  const Handle held(CreateFileW(ToWide(path).c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
  ASSERT_TRUE(held);
  ExpectFailure(RuntimeError::PermissionDenied, [&] { m_files.Read(path); });
  ExpectFailure(RuntimeError::PermissionDenied, [&] { m_files.Replace(path, "y"); });
  ExpectFailure(RuntimeError::PermissionDenied, [&] { m_files.Remove(path); });
  EXPECT_EQ(m_files.List(m_folder.Path()).size(), 1U);  // nothing is left of the attempt
}

TEST_F(Win32FileSystemTest, OthersMayReplaceAndRemoveWhatIsOpenHere) {
  const std::string path = m_folder.MakeFile("open", "old");
  const auto file = m_files.Open(path);
  m_files.Replace(path, "new");
  char bytes[3];
  ASSERT_EQ(file->Read(0, bytes, 3), 3U);
  EXPECT_EQ(std::string(bytes, 3), "old");
  EXPECT_EQ(m_files.Read(path), "new");
}

TEST_F(Win32FileSystemTest, ReplaceKeepsTheAttributes) {
  const std::string path = m_folder.MakeFile("hidden", "x");
  m_files.SetAttributes(path, platform::kHidden | platform::kArchive);
  if ((m_files.Attributes(path) & platform::kHidden) == 0) GTEST_SKIP() << "this disk keeps no attributes";
  m_files.Replace(path, "y");
  EXPECT_EQ(m_files.Attributes(path) & platform::kHidden, platform::kHidden);
  EXPECT_EQ(m_files.Read(path), "y");
}

TEST_F(Win32FileSystemTest, TakesRelativePathsAndSlashes) {
  m_folder.MakeFile("sub\\a.txt", "x");
  const std::string before = m_files.CurrentFolder();
  m_files.SetCurrentFolder(m_folder.Path());
  EXPECT_EQ(m_files.Read("sub/a.txt"), "x");
  EXPECT_EQ(m_files.Read(".\\sub\\..\\sub\\a.txt"), "x");
  m_files.SetCurrentFolder(before);
}

}  // namespace
}  // namespace hearthmake::win32
