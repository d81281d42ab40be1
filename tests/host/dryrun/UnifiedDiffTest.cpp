#include "host/dryrun/UnifiedDiff.hpp"

#include <gtest/gtest.h>

#include <random>
#include <sstream>
#include <vector>

namespace hearthmake::host {
namespace {

std::string Diff(const std::string& before, const std::string& after) {
  return UnifiedDiff(before, after, "old", "new");
}

TEST(UnifiedDiff, IsEmptyForEqualTexts) {
  EXPECT_EQ(Diff("", ""), "");
  EXPECT_EQ(Diff("a\r\nb\r\n", "a\r\nb\r\n"), "");
}

TEST(UnifiedDiff, ShowsAChangedRowWithThreeRowsAround) {
  EXPECT_EQ(Diff("1\r\n2\r\n3\r\n4\r\n5\r\n6\r\n7\r\n8\r\n9\r\n",
                 "1\r\n2\r\n3\r\n4\r\nfive\r\n6\r\n7\r\n8\r\n9\r\n"),
            "--- old\n+++ new\n@@ -2,7 +2,7 @@\n 2\n 3\n 4\n-5\n+five\n 6\n 7\n 8\n");
}

TEST(UnifiedDiff, CountsRowsThatComeInAndGo) {
  EXPECT_EQ(Diff("", "a\nb\n"), "--- old\n+++ new\n@@ -0,0 +1,2 @@\n+a\n+b\n");
  EXPECT_EQ(Diff("a\nb\n", ""), "--- old\n+++ new\n@@ -1,2 +0,0 @@\n-a\n-b\n");
  EXPECT_EQ(Diff("a\nc\n", "a\nb\nc\n"), "--- old\n+++ new\n@@ -1,2 +1,3 @@\n a\n+b\n c\n");
}

TEST(UnifiedDiff, TellsOfAMissingLineEnd) {
  EXPECT_EQ(Diff("a\n", "a"), "--- old\n+++ new\n@@ -1 +1 @@\n-a\n+a\n\\ No newline at end of file\n");
}

TEST(UnifiedDiff, JoinsChangesThatAreCloseAndPartsOthers) {
  const std::string six = "1\n2\n3\n4\n5\n6\n";
  EXPECT_EQ(Diff("a\n" + six + "b\n", "A\n" + six + "B\n"),
            "--- old\n+++ new\n@@ -1,8 +1,8 @@\n-a\n+A\n 1\n 2\n 3\n 4\n 5\n 6\n-b\n+B\n");
  EXPECT_EQ(Diff("a\n" + six + "7\nb\n", "A\n" + six + "7\nB\n"),
            "--- old\n+++ new\n@@ -1,4 +1,4 @@\n-a\n+A\n 1\n 2\n 3\n@@ -6,4 +6,4 @@\n 5\n 6\n 7\n-b\n+B\n");
}

TEST(UnifiedDiff, ReplacesAllWhereTooMuchIsDifferent) {
  std::string before;
  std::string after;
  for (int i = 0; i < 2000; ++i) {
    before += "b" + std::to_string(i) + "\n";
    after += "a" + std::to_string(i) + "\n";
  }
  const std::string diff = Diff("same\n" + before, "same\n" + after);
  EXPECT_TRUE(diff.starts_with("--- old\n+++ new\n@@ -1,2001 +1,2001 @@\n same\n-b0\n-b1\n"))
      << diff.substr(0, 100);
  EXPECT_TRUE(diff.ends_with("+a1998\n+a1999\n"));
}

std::vector<std::string> LinesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

// What a diff makes of a text, read as its format says.
std::string Apply(const std::string& text, const std::string& diff) {
  const auto rows = LinesOf(text);
  std::string result;
  std::size_t next = 0;
  for (const std::string& line : LinesOf(diff)) {
    if (line.starts_with("---") || line.starts_with("+++")) continue;
    if (line.starts_with("@@")) {
      const std::size_t start = std::stoul(line.substr(4));
      const bool isEmpty = line.substr(0, line.find('+')).find(",0 ") != std::string::npos;
      while (next + (isEmpty ? 0 : 1) < start) result += rows.at(next++) + "\n";
    } else if (line[0] == '+') {
      result += line.substr(1) + "\n";
    } else {
      EXPECT_EQ(rows.at(next), line.substr(1));
      if (line[0] == ' ') result += rows[next] + "\n";
      ++next;
    }
  }
  while (next < rows.size()) result += rows[next++] + "\n";
  return result;
}

TEST(UnifiedDiff, MakesTheOneTextOfTheOther) {
  std::mt19937 random(7);
  const auto below = [&random](int limit) {
    return static_cast<int>(random() % static_cast<unsigned>(limit));
  };
  for (int round = 0; round < 500; ++round) {
    std::string before;
    std::string after;
    for (int i = below(40); i > 0; --i) {
      const std::string row = std::to_string(below(6)) + "\n";
      if (below(4) != 0) before += row;
      if (below(4) != 0) after += row;
    }
    ASSERT_EQ(Apply(before, Diff(before, after)), after) << before << "->\n" << after;
  }
}

}  // namespace
}  // namespace hearthmake::host
