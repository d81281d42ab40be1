#include "host/page/SourceExcerpt.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "support/Workbench.hpp"

namespace hearthmake::host {
namespace {

class SourceExcerptTest : public testing::Test {
 protected:
  SourceExcerpt Read(const std::string& file, std::size_t line) const {
    return ReadExcerpt({file, line, "Wrong"}, "C:\\src\\");
  }

  support::Workbench bench;
};

TEST_F(SourceExcerptTest, ShowsTheLinesAroundAnError) {
  std::string source;
  for (int i = 1; i <= 20; ++i) source += "line " + std::to_string(i) + "\n";
  bench.Write("C:\\src\\Shelf.cls", source);
  const SourceExcerpt excerpt = Read("C:\\src\\Shelf.cls", 12);
  ASSERT_EQ(excerpt.lines.size(), 9U);
  EXPECT_EQ(excerpt.lines.front().number, 8U);
  EXPECT_EQ(excerpt.lines[4].number, 12U);
  EXPECT_EQ(excerpt.lines[4].text, "line 12");
  EXPECT_EQ(Read("C:\\src\\Shelf.cls", 1).lines.size(), 5U);
  EXPECT_EQ(Read("C:\\src\\Shelf.cls", 20).lines.back().text, "line 20");
}

TEST_F(SourceExcerptTest, LooksForARelativeFileInTheProjectsFolder) {
  bench.Write("C:\\src\\Shelf.cls", "one\ntwo");
  EXPECT_EQ(Read("Shelf.cls", 2).lines.back().text, "two");
}

TEST_F(SourceExcerptTest, ReadsTheCodePageOfSources) {
  bench.Write("C:\\src\\Shelf.cls",
              "' Gr\xf6\xdf"
              "e\n");
  EXPECT_EQ(Read("Shelf.cls", 1).lines.front().text, "' Größe");
}

TEST_F(SourceExcerptTest, CutsLongLinesOff) {
  bench.Write("C:\\src\\Shelf.cls", std::string(100'000, 'x'));
  EXPECT_LT(Read("Shelf.cls", 1).lines.front().text.size(), 300U);
}

TEST_F(SourceExcerptTest, ShowsNothingOfWhatIsNotThere) {
  bench.Write("C:\\src\\Shelf.cls", "one\n");
  EXPECT_TRUE(Read("Missing.cls", 1).lines.empty());
  EXPECT_TRUE(Read("Shelf.cls", 0).lines.empty());
  EXPECT_TRUE(Read("Shelf.cls", 2).lines.empty());
  EXPECT_TRUE(Read("Shelf.cls", std::numeric_limits<std::size_t>::max()).lines.empty());
  EXPECT_TRUE(Read("", 1).lines.empty());
}

}  // namespace
}  // namespace hearthmake::host
