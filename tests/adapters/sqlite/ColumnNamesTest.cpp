#include "adapters/sqlite/ColumnNames.hpp"

#include <gtest/gtest.h>

namespace hearthmake::sqlite {
namespace {

TEST(ColumnNames, FindsNamesInAnyOrderAndCase) {
  ColumnNames names({"Id", "Name", "Path", "Type"});
  std::size_t last = names.Count() - 1;
  for (int round = 0; round < 3; ++round) {
    EXPECT_EQ(names.Find("type", last), 3u);
    EXPECT_EQ(names.Find("TYPE", last), 3u);
    EXPECT_EQ(names.Find("Id", last), 0u);
    EXPECT_EQ(names.Find("Path", last), 2u);
    EXPECT_EQ(names.Find("path", last), 2u);
    EXPECT_EQ(names.Find("Name", last), 1u);
  }
}

TEST(ColumnNames, KeepsItsPlaceWhenANameIsUnknown) {
  ColumnNames names({"Id", "Name"});
  std::size_t last = 0;
  EXPECT_EQ(names.Find("Nam", last), ColumnNames::kNotFound);
  EXPECT_EQ(last, 0u);
  EXPECT_EQ(names.Find("Name", last), 1u);
}

TEST(ColumnNames, FindsNothingAmongNone) {
  ColumnNames names({});
  std::size_t last = names.Count() - 1;
  EXPECT_EQ(names.Find("Id", last), ColumnNames::kNotFound);
}

}  // namespace
}  // namespace hearthmake::sqlite
