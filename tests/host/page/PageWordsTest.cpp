#include "host/page/PageWords.hpp"

#include <gtest/gtest.h>

namespace hearthmake::host {
namespace {

TEST(PageWords, TellsTimesInTheUnitThatFits) {
  EXPECT_EQ(SecondsWord(0.0472), "47 ms");
  EXPECT_EQ(SecondsWord(0.42), "0.42 s");
  EXPECT_EQ(SecondsWord(12.34), "12.3 s");
  EXPECT_EQ(SecondsWord(59.96), "1:00 min");
  EXPECT_EQ(SecondsWord(187), "3:07 min");
  EXPECT_EQ(SecondsWord(3725), "1:02:05 h");
  EXPECT_EQ(SecondsChangeWord(-1.5), "−1.50 s");
}

TEST(PageWords, TellsSizesInTheUnitThatFits) {
  EXPECT_EQ(BytesWord(-1), "–");
  EXPECT_EQ(BytesWord(0), "0 B");
  EXPECT_EQ(BytesWord(1536), "1.5 KB");
  EXPECT_EQ(BytesWord(3 * 1024 * 1024), "3.0 MB");
  EXPECT_EQ(ByteChangeWord(-1536), "−1.5 KB");
  EXPECT_EQ(ByteChangeWord(20), "+20 B");
}

TEST(PageWords, TellsMomentsOfUniversalTime) {
  EXPECT_EQ(TimeWord(1'000'000'000), "2001-09-09 01:46 UTC");
  EXPECT_EQ(TimeStamp(1'000'000'000), "2001-09-09T01:46:40Z");
}

}  // namespace
}  // namespace hearthmake::host
