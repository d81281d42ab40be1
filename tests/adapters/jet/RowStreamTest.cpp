#include "adapters/jet/RowStream.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "adapters/jet/Failure.hpp"
#include "support/JetRows.hpp"

namespace hearthmake::jet {
namespace {

using support::CollectedRows;
using testing::HasSubstr;

const std::vector<Value> kRow = {{}, true, false, -5, 2.5, std::string("Gr\0ße", 6)};

std::string Sample() {
  std::string bytes;
  RowStreamWriter writer([&](std::string_view piece) { bytes += piece; });
  writer.BeginTable("Build", {"a", "b", "c", "d", "e", "f"});
  writer.Row(kRow);
  writer.OtherTable("Wetter");
  writer.Row(kRow);
  writer.End();
  return bytes;
}

bool Stream(const std::string& bytes, CollectedRows& rows, std::size_t step = 7,
            std::uint64_t limit = 1 << 20) {
  std::size_t at = 0;
  const auto read = [&](char* buffer, std::size_t size) {
    const std::size_t count = std::min({step, size, bytes.size() - at});
    std::copy_n(bytes.data() + at, count, buffer);
    at += count;
    return count;
  };
  return RowStreamReader(read, limit).Run(rows);
}

std::string FailureOf(const std::string& bytes, std::uint64_t limit = 1 << 20) {
  try {
    CollectedRows rows;
    return Stream(bytes, rows, 7, limit) ? "done" : "cut";
  } catch (const automation::Error& error) {
    return error.Description();
  }
}

TEST(RowStream, BringsEveryKindOfValue) {
  CollectedRows rows;
  EXPECT_TRUE(Stream(Sample(), rows));
  ASSERT_EQ(rows.tables.size(), 1U);
  EXPECT_EQ(rows.tables[0].name, "Build");
  EXPECT_THAT(rows.tables[0].columns, testing::ElementsAre("a", "b", "c", "d", "e", "f"));
  EXPECT_THAT(rows.tables[0].rows, testing::ElementsAre(kRow, kRow));
  EXPECT_THAT(rows.others, testing::ElementsAre("Wetter"));
}

TEST(RowStream, SeesEveryCut) {
  const std::string sample = Sample();
  for (std::size_t size = 0; size < sample.size(); ++size)
    EXPECT_EQ(FailureOf(sample.substr(0, size)), "cut") << size;
}

TEST(RowStream, BringsErrors) {
  std::string bytes;
  RowStreamWriter writer([&](std::string_view piece) { bytes += piece; });
  writer.Fail(3031, "The database has a password.");
  CollectedRows rows;
  try {
    Stream(bytes, rows);
    FAIL() << "no error";
  } catch (const automation::Error& error) {
    EXPECT_EQ(error.Number(), 3031);
    EXPECT_EQ(error.Description(), "The database has a password.");
  }
}

TEST(RowStream, RefusesWhatMakesNoSense) {
  const std::string magic = Sample().substr(0, Sample().find('T'));
  EXPECT_THAT(FailureOf("GNU mdb-export usage, and so on"), HasSubstr("something else than rows"));
  EXPECT_THAT(FailureOf(magic + "x"), HasSubstr("no row"));
  EXPECT_THAT(FailureOf(magic + "R"), HasSubstr("no table"));
  EXPECT_THAT(FailureOf(magic + "T" + std::string("\xFF\xFF\xFF\xFF", 4)), HasSubstr("too long"));
  EXPECT_THAT(FailureOf(magic + "T" + std::string(4, '\0') + "\xFF" + std::string("\xFF\0\0", 3)),
              HasSubstr("too many columns"));
  std::string kind = Sample();
  kind[kind.find('R') + 1] = '?';
  EXPECT_THAT(FailureOf(kind), HasSubstr("no known kind"));
}

TEST(RowStream, TakesNoMoreThanItsLimit) {
  EXPECT_EQ(FailureOf(Sample(), Sample().size()), "done");
  EXPECT_THAT(FailureOf(Sample(), Sample().size() - 1), HasSubstr("more rows than a file of its size"));
}

}  // namespace
}  // namespace hearthmake::jet
