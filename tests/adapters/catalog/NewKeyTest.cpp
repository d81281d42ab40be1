#include "adapters/catalog/NewKey.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

namespace hearthmake::catalog {
namespace {

TEST(NewKey, IsARandomGuidInBraces) {
  std::set<std::string> keys;
  for (int i = 0; i < 1000; ++i) {
    const std::string key = NewKey();
    EXPECT_THAT(key, testing::MatchesRegex(
                         "\\{[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}\\}"));
    keys.insert(key);
  }
  EXPECT_EQ(keys.size(), 1000U);
}

}  // namespace
}  // namespace hearthmake::catalog
