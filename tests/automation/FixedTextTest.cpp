#include "automation/FixedText.hpp"

#include <gtest/gtest.h>

namespace hearthmake::automation {
namespace {

TEST(FixedText, IsEmptyWhenNew) {
  const FixedText<30> text;
  EXPECT_TRUE(text.IsEmpty());
  EXPECT_EQ(text.Get(), "");
}

TEST(FixedText, KeepsATextThatFits) {
  FixedText<5> text;
  text = "12345";
  EXPECT_EQ(text.Get(), "12345");
}

TEST(FixedText, CutsALongerTextAtItsWidth) {
  FixedText<5> text;
  text = "123456";
  EXPECT_EQ(text.Get(), "12345");
}

TEST(FixedText, CountsCharactersAndNotBytes) {
  FixedText<5> text;
  text = "äöüßéx";
  EXPECT_EQ(text.Get(), "äöüßé");
}

TEST(FixedText, ReadsWithoutOuterBlanks) {
  FixedText<10> text;
  text = "  a b   ";
  EXPECT_EQ(text.Get(), "a b");
}

TEST(FixedText, LeadingBlanksCountForTheWidth) {
  FixedText<5> text;
  text = "   abcdef";
  EXPECT_EQ(text.Get(), "ab");
}

TEST(FixedText, KeepsBlanksThatAreNoSpaces) {
  FixedText<5> text;
  text = "\ta\t";
  EXPECT_EQ(text.Get(), "\ta\t");
}

TEST(FixedText, AllBlanksReadAsEmpty) {
  FixedText<3> text;
  text = "     x";
  EXPECT_TRUE(text.IsEmpty());
}

TEST(FixedText, ComparesByWhatIsRead) {
  FixedText<3> a;
  FixedText<3> b;
  a = " ab";
  b = "ab ";
  EXPECT_EQ(a, b);
}

}  // namespace
}  // namespace hearthmake::automation
