#include "adapters/typelib/InfoCache.hpp"

#include <gtest/gtest.h>

#include <string>

namespace hearthmake::typelib {
namespace {

InfoCache::Entry Named(const std::string& name) {
  InfoCache::Entry entry;
  entry.info.name = name;
  return entry;
}

TEST(InfoCache, FindsPathsWithoutRegardToCase) {
  InfoCache cache(10);
  EXPECT_EQ(cache.Find("C:\\Lib.dll"), nullptr);
  cache.Put("C:\\Lib.dll", Named("Lib"));
  ASSERT_NE(cache.Find("c:\\LIB.DLL"), nullptr);
  EXPECT_EQ(cache.Find("c:\\LIB.DLL")->info.name, "Lib");
  EXPECT_EQ(cache.Find("C:\\Lib.dll\\2"), nullptr);
}

TEST(InfoCache, ReplacesWhatItHas) {
  InfoCache cache(10);
  cache.Put("a", Named("old"));
  cache.Put("A", Named("new"));
  EXPECT_EQ(cache.Find("a")->info.name, "new");
}

TEST(InfoCache, ForgetsWhatWasUsedLongestAgo) {
  InfoCache cache(3);
  for (const char* path : {"a", "b", "c"}) cache.Put(path, Named(path));
  cache.Find("a");
  cache.Put("d", Named("d"));
  EXPECT_EQ(cache.Find("b"), nullptr);
  for (const char* path : {"a", "c", "d"}) {
    ASSERT_NE(cache.Find(path), nullptr) << path;
    EXPECT_EQ(cache.Find(path)->info.name, path);
  }
}

TEST(InfoCache, StaysWithinItsCapacity) {
  InfoCache cache(100);
  for (int i = 0; i < 10000; ++i) cache.Put("file" + std::to_string(i), Named("x"));
  EXPECT_EQ(cache.Find("file9899"), nullptr);
  EXPECT_NE(cache.Find("file9900"), nullptr);
}

}  // namespace
}  // namespace hearthmake::typelib
