#include "foundation/mFindFiles.hpp"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/ErrorExpect.hpp"
#include "support/Workbench.hpp"

namespace hearthmake {
namespace {

using support::Workbench;
using Paths = std::vector<std::string>;

TEST(mFindFiles, FindsFilesOfAFolderFirstAndThoseOfItsSubfoldersThen) {
  const Workbench bench;
  for (const char* name : {"b\\z.vbp", "A\\y.vbp", "A\\sub\\x.vbp", "Zeta.vbp", "alpha.VBP", "Beta.vbp"})
    bench.Write("C:\\src\\" + std::string(name), "x");
  EXPECT_EQ(mFindFiles::FindFiles("C:\\src\\", ".vbp"),
            (Paths{"C:\\src\\alpha.VBP", "C:\\src\\Beta.vbp", "C:\\src\\Zeta.vbp", "C:\\src\\A\\y.vbp",
                   "C:\\src\\A\\sub\\x.vbp", "C:\\src\\b\\z.vbp"}));
}

TEST(mFindFiles, TakesTheExtensionOnly) {
  const Workbench bench;
  for (const char* name : {"a.vbp", "a.vbpx", "a.vbp.bak", "vbp", "a.vbg"})
    bench.Write("C:\\src\\" + std::string(name), "x");
  bench.files->CreateFolders("C:\\src\\folder.vbp");
  EXPECT_EQ(mFindFiles::FindFiles("C:\\src\\", ".vbp"), Paths{"C:\\src\\a.vbp"});
}

TEST(mFindFiles, ComparesTheExtensionWithoutRegardToCase) {
  const Workbench bench;
  bench.Write("C:\\src\\a.VbP", "x");
  EXPECT_EQ(mFindFiles::FindFiles("C:\\src\\", ".VBP"), Paths{"C:\\src\\a.VbP"});
}

TEST(mFindFiles, AFolderWithoutFilesGivesNone) {
  const Workbench bench;
  EXPECT_TRUE(mFindFiles::FindFiles("C:\\src\\", ".vbp").empty());
}

TEST(mFindFiles, AMissingFolderIsAnError) {
  const Workbench bench;
  EXPECT_EQ(support::ErrorOf([] { mFindFiles::FindFiles("C:\\gone\\", ".vbp"); }).Number(), 76);
}

TEST(mFindFiles, AWalkEndsWhereALinkLeadsBack) {
  const Workbench bench;
  bench.Write("C:\\src\\sub\\a.vbp", "x");
  std::filesystem::create_directory_symlink(bench.Posix("C:\\src"), bench.Posix("C:\\src\\sub") + "/back");
  EXPECT_EQ(mFindFiles::FindFiles("C:\\src\\", ".vbp"), Paths{"C:\\src\\sub\\a.vbp"});
}

// Refuses to list one folder; file permissions would not stop every user of the tests.
class GuardedFiles final : public posix::PosixFileSystem {
 public:
  using PosixFileSystem::PosixFileSystem;
  std::vector<platform::FolderEntry> List(std::string_view folder) override {
    if (folder == "C:\\src\\closed\\")
      automation::Raise(automation::RuntimeError::PermissionDenied, "FileSystem");
    return PosixFileSystem::List(folder);
  }
};

TEST(mFindFiles, PassesOverAFolderThatItMayNotRead) {
  const Workbench bench;
  bench.Write("C:\\src\\closed\\a.vbp", "x");
  bench.Write("C:\\src\\open\\b.vbp", "x");
  auto ports = bench.apartment->Ports();
  ports.files = std::make_shared<GuardedFiles>(bench.drives);
  const Apartment apartment(ports);
  EXPECT_EQ(mFindFiles::FindFiles("C:\\src\\", ".vbp"), Paths{"C:\\src\\open\\b.vbp"});
}

TEST(mFindFiles, KeepsAccentsAndBlanks) {
  const Workbench bench;
  bench.Write("C:\\src\\Größe neu.vbp", "x");
  EXPECT_EQ(mFindFiles::FindFiles("C:\\src\\", ".vbp"), Paths{"C:\\src\\Größe neu.vbp"});
}

TEST(mFindFiles, NamesTheFilesOfOneFolder) {
  const Workbench bench;
  for (const char* name : {"b.cls", "A.cls", "c.txt", "sub\\d.cls"})
    bench.Write("C:\\src\\" + std::string(name), "x");
  EXPECT_EQ(mFindFiles::FilesOf("C:\\src\\", ".cls"), (Paths{"A.cls", "b.cls"}));
}

}  // namespace
}  // namespace hearthmake
