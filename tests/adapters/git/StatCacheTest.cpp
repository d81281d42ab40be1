#include "adapters/git/StatCache.hpp"

#include <gtest/gtest.h>

#include <string>

#include "support/PosixFolder.hpp"

namespace hearthmake::git {
namespace {

git_oid Id(unsigned char byte) {
  git_oid id{};
  id.id[0] = byte;
  return id;
}

class StatCacheTest : public ::testing::Test {
 protected:
  StatCacheTest() { m_folder.MakeFolder("repo/refs"); }
  StatCache Open() const { return StatCache(m_folder.Path("repo"), "/w"); }

  support::PosixFolder m_folder;
  const FileStatus kOld{5, 1000, 1000, 7};  // changed long before the cache is written
};

TEST_F(StatCacheTest, RemembersWhatAFileHolds) {
  StatCache cache = Open();
  cache.Put("Lib/é", kOld, Id(3));
  cache.Save();
  const StatCache again = Open();
  const git_oid* id = again.Find("Lib/é", kOld);
  ASSERT_NE(id, nullptr);
  EXPECT_EQ(id->id[0], 3);
  EXPECT_EQ(again.Find("lib/é", kOld), nullptr);
}

TEST_F(StatCacheTest, KnowsNothingOfAFileWithAnotherStatus) {
  StatCache cache = Open();
  cache.Put("a", kOld, Id(1));
  cache.Save();
  const StatCache again = Open();
  for (const FileStatus& other : {FileStatus{6, 1000, 1000, 7}, FileStatus{5, 1001, 1000, 7},
                                  FileStatus{5, 1000, 1001, 7}, FileStatus{5, 1000, 1000, 8}})
    EXPECT_EQ(again.Find("a", other), nullptr);
}

TEST_F(StatCacheTest, DoesNotTrustAFileThatChangedWhenItWasWritten) {
  timespec now{};
  clock_gettime(CLOCK_REALTIME, &now);
  // Loading libgit2 and a busy machine may take longer than the clock's step that is reckoned with.
  const std::int64_t time = (now.tv_sec + 60) * 1'000'000'000LL + now.tv_nsec;
  StatCache cache = Open();
  cache.Put("a", {5, 1000, time, 7}, Id(1));
  cache.Save();
  EXPECT_EQ(Open().Find("a", {5, 1000, time, 7}), nullptr);
}

TEST_F(StatCacheTest, ForgetsWhatIsDropped) {
  StatCache cache = Open();
  cache.Put("a", kOld, Id(1));
  cache.Save();
  cache.Drop("a");
  cache.Save();
  EXPECT_EQ(Open().Count(), 0U);
}

TEST_F(StatCacheTest, ADamagedFileHoldsNothing) {
  StatCache cache = Open();
  cache.Put("a", kOld, Id(1));
  cache.Save();
  const std::string whole = Open().Print();
  EXPECT_EQ(StatCache::Parse(whole).Count(), 1U);
  for (std::size_t i = 0; i < whole.size(); ++i) {
    EXPECT_EQ(StatCache::Parse(whole.substr(0, i)).Count(), 0U) << i;
    std::string damaged = whole;
    damaged[i] = static_cast<char>(damaged[i] ^ 0x10);
    EXPECT_EQ(StatCache::Parse(damaged).Count(), 0U) << i;
  }
}

TEST_F(StatCacheTest, ARepositoryThatCannotBeWrittenToCostsNothing) {
  StatCache cache("/proc/none", "/w");
  cache.Put("a", kOld, Id(1));
  EXPECT_NO_THROW(cache.Save());
}

}  // namespace
}  // namespace hearthmake::git
