#include "adapters/posix/FolderListings.hpp"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <thread>

#include "support/PosixFolder.hpp"

namespace hearthmake::posix {
namespace {

namespace fs = std::filesystem;

class FolderListingsTest : public ::testing::Test {
 protected:
  std::optional<std::string> Find(std::string_view name) {
    struct stat status {};
    EXPECT_EQ(stat(m_folder.Path().c_str(), &status), 0);
    return m_listings.Find(m_folder.Path(), status, name);
  }
  // Long enough for a listing that is taken now to be remembered.
  static void Settle() { std::this_thread::sleep_for(std::chrono::milliseconds(40)); }

  support::PosixFolder m_folder;
  FolderListings m_listings;
};

TEST_F(FolderListingsTest, FindsNamesWithoutRegardToCase) {
  m_folder.MakeFile("Prüf Lib.vbp");
  EXPECT_EQ(Find("PRÜF LIB.VBP"), "Prüf Lib.vbp");
  EXPECT_EQ(Find("Pruf Lib.vbp"), std::nullopt);
  EXPECT_EQ(Find("."), std::nullopt);
}

TEST_F(FolderListingsTest, PrefersTheExactSpellingThenTheFirstInByteOrder) {
  m_folder.MakeFile("lib");
  m_folder.MakeFile("LIB");
  m_folder.MakeFile("Lib");
  EXPECT_EQ(Find("lib"), "lib");
  EXPECT_EQ(Find("Lib"), "Lib");
  EXPECT_EQ(Find("lIb"), "LIB");
}

TEST_F(FolderListingsTest, RemembersASettledFolder) {
  m_folder.MakeFile("Lib");
  Settle();
  struct stat status {};
  ASSERT_EQ(stat(m_folder.Path().c_str(), &status), 0);
  ASSERT_EQ(m_listings.Find(m_folder.Path(), status, "lib"), "Lib");
  // Only memory can answer for a folder that is gone.
  fs::remove_all(m_folder.Path());
  EXPECT_EQ(m_listings.Find(m_folder.Path(), status, "LIB"), "Lib");
}

TEST_F(FolderListingsTest, DoesNotRememberAFolderThatHasJustChanged) {
  using Clock = std::chrono::steady_clock;
  for (int attempt = 0; attempt < 100; ++attempt) {
    const Clock::time_point start = Clock::now();
    const std::string folder = m_folder.MakeFolder("Folder" + std::to_string(attempt));
    m_folder.MakeFile("Folder" + std::to_string(attempt) + "/Lib");
    struct stat status {};
    ASSERT_EQ(stat(folder.c_str(), &status), 0);
    ASSERT_EQ(m_listings.Find(folder, status, "lib"), "Lib");
    if (Clock::now() - start > std::chrono::milliseconds(10)) continue;  // held up: no longer just now
    fs::remove_all(folder);
    EXPECT_EQ(m_listings.Find(folder, status, "lib"), std::nullopt);
    return;
  }
  GTEST_SKIP() << "this machine is too busy to look at a folder within 10 ms of its change";
}

TEST_F(FolderListingsTest, RemembersAFolderFromTheFuture) {
  m_folder.MakeFile("Lib");
  fs::last_write_time(m_folder.Path(), fs::file_time_type::clock::now() + std::chrono::hours(24));
  Settle();
  struct stat status {};
  ASSERT_EQ(stat(m_folder.Path().c_str(), &status), 0);
  ASSERT_EQ(m_listings.Find(m_folder.Path(), status, "lib"), "Lib");
  fs::remove_all(m_folder.Path());
  EXPECT_EQ(m_listings.Find(m_folder.Path(), status, "LIB"), "Lib");
}

TEST_F(FolderListingsTest, ReadsAFolderAgainThatHasChanged) {
  m_folder.MakeFile("One");
  Settle();
  EXPECT_EQ(Find("ONE"), "One");
  m_folder.MakeFile("Two");
  fs::remove(m_folder.Path("One"));
  EXPECT_EQ(Find("TWO"), "Two");
  EXPECT_EQ(Find("ONE"), std::nullopt);
  fs::rename(m_folder.Path("Two"), m_folder.Path("tWO"));
  EXPECT_EQ(Find("TWO"), "tWO");
}

// The second change of a pair often carries the stamp of the first: a listing taken in between must
// not outlive it.
TEST_F(FolderListingsTest, SeesTwoChangesUnderOneTimeStamp) {
  for (int i = 0; i < 300; ++i) {
    const std::string name = "File" + std::to_string(i);
    m_folder.MakeFile(name + ".a");
    ASSERT_EQ(Find("FILE" + std::to_string(i) + ".A"), name + ".a");
    m_folder.MakeFile(name + ".b");
    ASSERT_EQ(Find("FILE" + std::to_string(i) + ".B"), name + ".b");
  }
}

TEST_F(FolderListingsTest, FindsNothingInWhatCanNotBeRead) {
  struct stat status {};
  EXPECT_EQ(m_listings.Find(m_folder.Path("none"), status, "a"), std::nullopt);
  EXPECT_EQ(m_listings.Find(m_folder.MakeFile("file"), status, "a"), std::nullopt);
}

}  // namespace
}  // namespace hearthmake::posix
