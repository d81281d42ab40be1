#include "host/dryrun/OverlayFiles.hpp"

#include <gtest/gtest.h>

#include "support/Workbench.hpp"

namespace hearthmake::host {
namespace {

class OverlayFilesTest : public testing::Test {
 protected:
  OverlayFilesTest() : overlay(bench.files) { bench.WriteBytes("C:\\src\\a.txt", "disk"); }

  support::Workbench bench;
  OverlayFiles overlay;
};

TEST_F(OverlayFilesTest, ShowsTheDiskUntilAFileIsWritten) {
  EXPECT_EQ(overlay.Read("C:\\src\\a.txt"), "disk");
  EXPECT_EQ(overlay.Stamp("C:\\src\\a.txt"), bench.files->Stamp("C:\\src\\a.txt"));
  overlay.Replace("C:\\src\\a.txt", "memory");
  EXPECT_EQ(overlay.Read("c:\\SRC\\A.txt"), "memory");
  EXPECT_EQ(overlay.Stamp("C:\\src\\a.txt").size, 6);
  EXPECT_EQ(overlay.Open("C:\\src\\a.txt")->Size(), 6U);
  EXPECT_EQ(bench.Read("C:\\src\\a.txt"), "disk");
}

TEST_F(OverlayFilesTest, KeepsEveryWriteOffTheDisk) {
  overlay.Append("C:\\src\\a.txt", "!");
  overlay.Copy("C:\\src\\a.txt", "C:\\src\\b.txt");
  overlay.Rename("C:\\src\\b.txt", "C:\\src\\c.txt");
  EXPECT_EQ(overlay.ReadOrCreate("C:\\src\\new.txt"), "");
  EXPECT_EQ(overlay.Read("C:\\src\\c.txt"), "disk!");
  EXPECT_FALSE(overlay.FileExists("C:\\src\\b.txt"));
  EXPECT_TRUE(overlay.FileExists("C:\\src\\new.txt"));
  overlay.Remove("C:\\src\\a.txt");
  overlay.SetAttributes("C:\\src\\c.txt", platform::kReadOnly);
  EXPECT_FALSE(overlay.FileExists("C:\\src\\a.txt"));
  EXPECT_EQ(overlay.Stamp("C:\\src\\a.txt").size, -1);
  EXPECT_EQ(bench.files->List("C:\\src").size(), 1U);
  EXPECT_EQ(bench.Read("C:\\src\\a.txt"), "disk");
}

TEST_F(OverlayFilesTest, FailsLikeADiskForWhatIsNotThere) {
  overlay.Remove("C:\\src\\a.txt");
  for (const char* path : {"C:\\src\\a.txt", "C:\\src\\never.txt"}) {
    for (const auto& use : {std::function<void()>([&] { overlay.Read(path); }),
                            std::function<void()>([&] { overlay.Remove(path); }),
                            std::function<void()>([&] { overlay.SetAttributes(path, platform::kNormal); })}) {
      try {
        use();
        ADD_FAILURE() << path;
      } catch (const automation::Error& error) {
        EXPECT_EQ(error.Number(), 53) << error.Description();
      }
    }
  }
}

TEST_F(OverlayFilesTest, RefusesWhatItCantKeepInMemory) {
  EXPECT_THROW(overlay.CreateFolder("C:\\src\\new"), automation::Error);
  EXPECT_THROW(overlay.CreateFolders("C:\\src\\new"), automation::Error);
  EXPECT_NO_THROW(overlay.CreateFolders("C:\\src"));
  EXPECT_THROW(overlay.RemoveFolder("C:\\src"), automation::Error);
  EXPECT_THROW(overlay.OpenForWriting("C:\\src\\a.txt", {}), automation::Error);
  EXPECT_FALSE(bench.files->FolderExists("C:\\src\\new"));
}

}  // namespace
}  // namespace hearthmake::host
