#include "adapters/posix/PosixFileSystem.hpp"

#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <cstring>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "automation/Error.hpp"
#include "platform/FileSystemConformance.hpp"
#include "support/PosixFolder.hpp"

namespace hearthmake::platform {
namespace {

FileSystemPlayground MakePlayground(char letter, bool wronglyCased) {
  auto folder = std::make_shared<support::PosixFolder>();
  auto drives = std::make_shared<posix::DriveMap>();
  drives->SetDrive(letter, folder->Path());
  folder->MakeFolder("Play Ground ä");
  const std::string name = wronglyCased ? ":\\PLAY GROUND Ä" : ":\\Play Ground ä";
  return {std::make_shared<posix::PosixFileSystem>(drives), letter + name, folder};
}

FileSystemPlayground MakeExactPlayground() { return MakePlayground('P', false); }
FileSystemPlayground MakeWronglyCasedPlayground() { return MakePlayground('p', true); }

INSTANTIATE_TEST_SUITE_P(Posix, FileSystemConformance, ::testing::Values(MakeExactPlayground));
INSTANTIATE_TEST_SUITE_P(PosixWronglyCased, FileSystemConformance,
                         ::testing::Values(MakeWronglyCasedPlayground));

}  // namespace
}  // namespace hearthmake::platform

namespace hearthmake::posix {
namespace {

namespace fs = std::filesystem;
using automation::RuntimeError;

void ExpectFailure(RuntimeError expected, const std::function<void()>& call) {
  try {
    call();
    ADD_FAILURE() << "no failure";
  } catch (const automation::Error& error) {
    EXPECT_EQ(error.Number(), static_cast<std::int32_t>(expected)) << error.Description();
  }
}

// No file grows beyond this many bytes while the object lives, as on a full disk.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t bytes) : m_handler(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &m_old);
    const rlimit limit{bytes, m_old.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  FileSizeLimit(const FileSizeLimit&) = delete;
  FileSizeLimit& operator=(const FileSizeLimit&) = delete;
  ~FileSizeLimit() {
    setrlimit(RLIMIT_FSIZE, &m_old);
    std::signal(SIGXFSZ, m_handler);
  }

 private:
  rlimit m_old{};
  void (*m_handler)(int);
};

// A file system of 64 KB mounted on a folder, where we are allowed to.
class SmallDisk {
 public:
  explicit SmallDisk(std::string folder) : m_folder(std::move(folder)) {
    m_error = mount("tmpfs", m_folder.c_str(), "tmpfs", 0, "size=64k") == 0 ? 0 : errno;
  }
  SmallDisk(const SmallDisk&) = delete;
  SmallDisk& operator=(const SmallDisk&) = delete;
  ~SmallDisk() {
    if (m_error == 0) umount2(m_folder.c_str(), MNT_DETACH);
  }
  int Error() const { return m_error; }

 private:
  std::string m_folder;
  int m_error = 0;
};

// Root is let through everywhere: for tests of permissions we are somebody else for a while.
class OrdinaryUser {
 public:
  OrdinaryUser() : m_wasRoot(geteuid() == 0) {
    if (m_wasRoot) m_done = seteuid(kNobody) == 0;
  }
  OrdinaryUser(const OrdinaryUser&) = delete;
  OrdinaryUser& operator=(const OrdinaryUser&) = delete;
  ~OrdinaryUser() {
    if (m_wasRoot && seteuid(0) != 0) std::abort();
  }
  bool Done() const { return m_done; }

  static constexpr uid_t kNobody = 65534;

 private:
  bool m_wasRoot;
  bool m_done = true;
};

class PosixFileSystemTest : public ::testing::Test {
 protected:
  PosixFileSystemTest() {
    auto drives = std::make_shared<DriveMap>();
    drives->SetDrive('D', m_folder.Path());
    m_files = std::make_unique<PosixFileSystem>(drives);
  }

  std::size_t CountOfFiles() const {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(m_folder.Path()), {}));
  }

  support::PosixFolder m_folder;
  std::unique_ptr<PosixFileSystem> m_files;
};

TEST_F(PosixFileSystemTest, PipesAndDevicesAreNoFilesAndHoldNobodyUp) {
  ASSERT_EQ(mkfifo(m_folder.Path("pipe").c_str(), 0600), 0);
  EXPECT_FALSE(m_files->FileExists("D:\\pipe"));
  EXPECT_FALSE(m_files->FolderExists("D:\\pipe"));
  EXPECT_EQ(m_files->Stamp("D:\\pipe").size, -1);
  ExpectFailure(RuntimeError::PathFileAccess, [&] { m_files->Read("D:\\PIPE"); });
  ExpectFailure(RuntimeError::PathFileAccess, [&] { m_files->ReadOrCreate("D:\\pipe"); });
  ExpectFailure(RuntimeError::PathFileAccess, [&] { m_files->Open("D:\\pipe"); });
  ExpectFailure(RuntimeError::PathFileAccess, [&] { m_files->Append("D:\\pipe", "x"); });
  ExpectFailure(RuntimeError::PathFileAccess, [&] { m_files->Replace("D:\\pipe", "x"); });
  ExpectFailure(RuntimeError::PathFileAccess, [&] { m_files->Copy("D:\\pipe", "D:\\x"); });
  EXPECT_EQ(CountOfFiles(), 1U);
  m_files->Remove("D:\\pipe");
  EXPECT_EQ(CountOfFiles(), 0U);
}

TEST_F(PosixFileSystemTest, LinksToNothingDoNotExistButCanBeRemoved) {
  fs::create_symlink("nothing", m_folder.Path("Dangling"));
  EXPECT_FALSE(m_files->FileExists("D:\\dangling"));
  EXPECT_EQ(m_files->Stamp("D:\\Dangling").size, -1);
  ExpectFailure(RuntimeError::FileNotFound, [&] { m_files->Read("D:\\dangling"); });
  EXPECT_EQ(m_files->List("D:\\").size(), 1U);
  ExpectFailure(RuntimeError::PathFileAccess, [&] { m_files->CreateFolders("D:\\dangling"); });
  m_files->Remove("D:\\dangling");
  EXPECT_EQ(CountOfFiles(), 0U);
}

TEST_F(PosixFileSystemTest, LinksInACircleAreRefused) {
  fs::create_symlink("b", m_folder.Path("a"));
  fs::create_symlink("a", m_folder.Path("b"));
  EXPECT_FALSE(m_files->FileExists("D:\\a"));
  ExpectFailure(RuntimeError::PathFileAccess, [&] { m_files->Read("D:\\a"); });
}

TEST_F(PosixFileSystemTest, FindsFilesWithNamesThatAreNotUtf8) {
  m_folder.MakeFile("M\xFCller.txt", "x");
  const auto entries = m_files->List("D:\\");
  ASSERT_EQ(entries.size(), 1U);
  EXPECT_EQ(entries[0].name, "Müller.txt");
  EXPECT_EQ(m_files->Read("D:\\" + entries[0].name), "x");
  m_files->Replace("D:\\MÜLLER.TXT", "y");
  EXPECT_EQ(m_folder.Content("M\xFCller.txt"), "y");
  EXPECT_EQ(CountOfFiles(), 1U);
}

TEST_F(PosixFileSystemTest, ListsNoNamesThatCanNotBeSaid) {
  m_folder.MakeFile("back\\slash");
  m_folder.MakeFile("plain");
  EXPECT_EQ(m_files->List("D:\\").size(), 1U);
}

TEST_F(PosixFileSystemTest, ListsLinksAsWhatTheyPointTo) {
  m_folder.MakeFolder("Folder");
  fs::create_directory_symlink("Folder", m_folder.Path("link"));
  for (const platform::FolderEntry& entry : m_files->List("D:\\")) EXPECT_TRUE(entry.isFolder) << entry.name;
}

TEST_F(PosixFileSystemTest, NamesTooLongAreBadNames) {
  const std::string path = "D:\\" + std::string(300, 'n');
  ExpectFailure(RuntimeError::BadFileName, [&] { m_files->Read(path); });
  ExpectFailure(RuntimeError::BadFileName, [&] { m_files->Replace(path, "x"); });
  ExpectFailure(RuntimeError::BadFileName, [&] { m_files->CreateFolders(path); });
}

TEST_F(PosixFileSystemTest, ReplacesAFileWithANameOfFullLength) {
  const std::string path = "D:\\" + std::string(255, 'n');
  m_files->Replace(path, "one");
  m_files->Replace(path, "two");
  EXPECT_EQ(m_files->Read(path), "two");
}

TEST_F(PosixFileSystemTest, ReadsFilesOfUnknownSize) {
  DriveMap map;
  map.SetDrive('Z', "/");
  PosixFileSystem files(std::make_shared<DriveMap>(map));
  EXPECT_TRUE(files.Read("Z:\\proc\\self\\STATUS").starts_with("Name:"));
}

TEST_F(PosixFileSystemTest, RefusesToReadAFileBeyondTwoGigabytes) {
  const std::string path = m_folder.MakeFile("huge");
  std::error_code error;
  fs::resize_file(path, 3ULL << 30U, error);
  if (error) GTEST_SKIP() << "no sparse file of 3 GB here: " << error.message();
  ExpectFailure(RuntimeError::OutOfMemory, [&] { m_files->Read("D:\\huge"); });
  EXPECT_EQ(m_files->Stamp("D:\\huge").size, 3LL << 30U);
  char byte = 'x';
  EXPECT_EQ(m_files->Open("D:\\huge")->Read((3ULL << 30U) - 1, &byte, 1), 1U);
  EXPECT_EQ(byte, '\0');
}

TEST_F(PosixFileSystemTest, ReadOnlyIsTheOwnersWritePermission) {
  m_folder.MakeFile("a");
  fs::permissions(m_folder.Path("a"), fs::perms(0754));
  m_files->SetAttributes("D:\\a", platform::kNormal);
  EXPECT_EQ(m_folder.Mode("a"), 0754U);
  m_files->SetAttributes("D:\\a", platform::kReadOnly | platform::kArchive);
  EXPECT_EQ(m_folder.Mode("a"), 0554U);
  m_files->SetAttributes("D:\\a", platform::kHidden);
  EXPECT_EQ(m_folder.Mode("a"), 0754U);
  EXPECT_EQ(m_files->Attributes("D:\\a"), platform::kNormal);
}

TEST_F(PosixFileSystemTest, FoldersAreNeverReadOnly) {
  m_folder.MakeFolder("d");
  m_files->SetAttributes("D:\\d", platform::kReadOnly);
  EXPECT_EQ(m_files->Attributes("D:\\d"), platform::kFolder);
  m_files->Replace("D:\\d\\a", "x");
}

TEST_F(PosixFileSystemTest, NamesWithADotInFrontAreHidden) {
  m_folder.MakeFile(".a");
  m_folder.MakeFolder(".d");
  EXPECT_EQ(m_files->Attributes("D:\\.A"), platform::kHidden);
  EXPECT_EQ(m_files->Attributes("D:\\.d"), platform::kHidden | platform::kFolder);
}

TEST_F(PosixFileSystemTest, ReplaceKeepsPermissionsAndOwner) {
  const std::string path = m_folder.MakeFile("a", "old");
  fs::permissions(path, fs::perms(0741));
  const bool isRoot = geteuid() == 0;
  if (isRoot) {
    ASSERT_EQ(chown(path.c_str(), OrdinaryUser::kNobody, OrdinaryUser::kNobody), 0);
  }
  m_files->Replace("D:\\a", "new");
  EXPECT_EQ(m_folder.Mode("a"), 0741U);
  struct stat status {};
  ASSERT_EQ(stat(path.c_str(), &status), 0);
  EXPECT_EQ(status.st_uid, isRoot ? OrdinaryUser::kNobody : geteuid());
}

TEST_F(PosixFileSystemTest, ReplaceKeepsALinkAndReplacesWhatItPointsTo) {
  m_folder.MakeFile("real/a", "old");
  fs::create_symlink("real/a", m_folder.Path("link"));
  m_files->Replace("D:\\LINK", "new");
  EXPECT_TRUE(fs::is_symlink(m_folder.Path("link")));
  EXPECT_EQ(m_folder.Content("real/a"), "new");
}

TEST_F(PosixFileSystemTest, ReplaceLeavesTheOldFileWholeWhereTheNewOneDoesNotFit) {
  m_folder.MakeFile("a", "old");
  {
    const FileSizeLimit limit(10000);
    ExpectFailure(RuntimeError::DiskFull, [&] { m_files->Replace("D:\\a", std::string(20000, 'x')); });
    ExpectFailure(RuntimeError::DiskFull, [&] { m_files->Replace("D:\\b", std::string(20000, 'x')); });
  }
  EXPECT_EQ(m_folder.Content("a"), "old");
  EXPECT_EQ(CountOfFiles(), 1U);
}

TEST_F(PosixFileSystemTest, AppendWritesAllOrNothing) {
  m_folder.MakeFile("a", "old");
  {
    const FileSizeLimit limit(10000);
    ExpectFailure(RuntimeError::DiskFull, [&] { m_files->Append("D:\\a", std::string(20000, 'x')); });
  }
  EXPECT_EQ(m_folder.Content("a"), "old");
}

TEST_F(PosixFileSystemTest, AFullDiskLeavesEveryFileWhole) {
  m_folder.MakeFolder("disk");
  const SmallDisk disk(m_folder.Path("disk"));
  if (disk.Error() != 0) GTEST_SKIP() << "can't mount a small disk here: " << std::strerror(disk.Error());
  m_files->Replace("D:\\disk\\a", std::string(30000, 'a'));
  ExpectFailure(RuntimeError::DiskFull, [&] { m_files->Replace("D:\\disk\\a", std::string(50000, 'b')); });
  ExpectFailure(RuntimeError::DiskFull, [&] { m_files->Append("D:\\disk\\a", std::string(50000, 'b')); });
  m_folder.MakeFile("large", std::string(100000, 'c'));
  ExpectFailure(RuntimeError::DiskFull, [&] { m_files->Copy("D:\\large", "D:\\disk\\a"); });
  ExpectFailure(RuntimeError::DiskFull, [&] { m_files->Rename("D:\\large", "D:\\disk\\large"); });
  EXPECT_EQ(m_folder.Content("disk/a"), std::string(30000, 'a'));
  EXPECT_EQ(m_files->List("D:\\disk").size(), 1U);
  EXPECT_EQ(m_folder.Content("large").size(), 100000U);
}

TEST_F(PosixFileSystemTest, RenameMovesFilesToOtherDisks) {
  m_folder.MakeFolder("disk");
  const SmallDisk disk(m_folder.Path("disk"));
  if (disk.Error() != 0) GTEST_SKIP() << "can't mount a small disk here: " << std::strerror(disk.Error());
  m_folder.MakeFile("a", "content");
  m_folder.MakeFolder("folder");
  m_files->SetAttributes("D:\\a", platform::kReadOnly);
  m_files->Rename("D:\\a", "D:\\disk\\b");
  EXPECT_EQ(m_folder.Content("disk/b"), "content");
  EXPECT_FALSE(fs::exists(m_folder.Path("a")));
  ExpectFailure(RuntimeError::PathFileAccess, [&] { m_files->Rename("D:\\folder", "D:\\disk\\folder"); });
}

TEST_F(PosixFileSystemTest, PermissionDeniedIsError70) {
  m_folder.MakeFile("closed/a", "x");
  m_folder.MakeFile("open/a", "x");
  fs::permissions(m_folder.Path(), fs::perms(0755));
  fs::permissions(m_folder.Path("closed"), fs::perms::none);
  fs::permissions(m_folder.Path("open"), fs::perms(0555));
  {
    const OrdinaryUser user;
    if (!user.Done()) GTEST_SKIP() << "can't become an ordinary user here";
    EXPECT_FALSE(m_files->FileExists("D:\\closed\\a"));
    ExpectFailure(RuntimeError::PermissionDenied, [&] { m_files->Read("D:\\closed\\a"); });
    ExpectFailure(RuntimeError::PermissionDenied, [&] { m_files->List("D:\\closed"); });
    ExpectFailure(RuntimeError::PermissionDenied, [&] { m_files->Replace("D:\\open\\b", "x"); });
    ExpectFailure(RuntimeError::PermissionDenied, [&] { m_files->Remove("D:\\open\\a"); });
    ExpectFailure(RuntimeError::PermissionDenied, [&] { m_files->CreateFolders("D:\\open\\d\\e"); });
  }
  fs::permissions(m_folder.Path("closed"), fs::perms(0700));
}

TEST_F(PosixFileSystemTest, AFileThatMayNotBeReadCanBeReplaced) {
  const std::string path = m_folder.MakeFile("mine/a", "old");
  fs::permissions(m_folder.Path(), fs::perms(0755));
  fs::permissions(m_folder.Path("mine"), fs::perms(0777));
  fs::permissions(path, fs::perms(0222));
  {
    const OrdinaryUser user;
    if (!user.Done()) GTEST_SKIP() << "can't become an ordinary user here";
    m_files->Replace("D:\\mine\\a", "new");
    m_files->Append("D:\\mine\\a", "!");
  }
  EXPECT_EQ(m_folder.Mode("mine/a"), 0222U);
  fs::permissions(path, fs::perms(0600));
  EXPECT_EQ(m_folder.Content("mine/a"), "new!");
}

TEST_F(PosixFileSystemTest, AnOrdinaryUserIsRefusedReadOnlyFilesLikeRoot) {
  fs::permissions(m_folder.Path(""), fs::perms(0777));
  const std::string path = m_folder.MakeFile("a", "old");
  fs::permissions(path, fs::perms(0444));
  const OrdinaryUser user;
  if (!user.Done()) GTEST_SKIP() << "can't become an ordinary user here";
  ExpectFailure(RuntimeError::PathFileAccess, [&] { m_files->Append("D:\\a", "x"); });
  ExpectFailure(RuntimeError::PathFileAccess, [&] { m_files->Replace("D:\\a", "x"); });
}

TEST_F(PosixFileSystemTest, RemovesALinkToAFolderAndNotTheFolder) {
  m_folder.MakeFile("Folder/a");
  fs::create_directory_symlink("Folder", m_folder.Path("link"));
  m_files->RemoveFolder("D:\\LINK");
  EXPECT_FALSE(fs::exists(fs::symlink_status(m_folder.Path("link"))));
  EXPECT_TRUE(fs::exists(m_folder.Path("Folder/a")));
}

TEST_F(PosixFileSystemTest, NothingIsReachedThroughADriveThatIsNotMapped) {
  ExpectFailure(RuntimeError::PathNotFound, [&] { m_files->Read("Q:\\a"); });
  ExpectFailure(RuntimeError::PathNotFound, [&] { m_files->ReadOrCreate("Q:\\a"); });
  ExpectFailure(RuntimeError::PathNotFound, [&] { m_files->Replace("\\\\server\\share\\a", "x"); });
  ExpectFailure(RuntimeError::PathNotFound, [&] { m_files->Append("Q:\\a", "x"); });
  ExpectFailure(RuntimeError::PathNotFound, [&] { m_files->Remove("Q:\\a"); });
  ExpectFailure(RuntimeError::PathNotFound, [&] { m_files->CreateFolders("Q:\\a"); });
  ExpectFailure(RuntimeError::PathNotFound, [&] { m_files->RemoveFolder("Q:\\a"); });
  ExpectFailure(RuntimeError::PathNotFound, [&] { m_files->Rename("Q:\\a", "Q:\\b"); });
  ExpectFailure(RuntimeError::PathNotFound, [&] { m_files->SetAttributes("Q:\\a", platform::kNormal); });
}

TEST(PosixFileSystem, TellsLinksInAListing) {
  const support::PosixFolder folder;
  folder.MakeFolder("real");
  std::filesystem::create_symlink(folder.Path("real"), folder.Path("link"));
  PosixFileSystem files(std::make_shared<DriveMap>(DriveMap::BuiltIn(folder.Path())));
  int links = 0;
  for (const auto& entry : files.List("Z:" + folder.Path())) {
    EXPECT_TRUE(entry.isFolder) << entry.name;
    EXPECT_EQ(entry.isLink, entry.name == "link");
    links += entry.isLink ? 1 : 0;
  }
  EXPECT_EQ(links, 1);
}

}  // namespace
}  // namespace hearthmake::posix
