#include "adapters/typelib/HelpWords.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "automation/Error.hpp"
#include "support/TypeLibBytes.hpp"
#include "support/TypeLibFakeFiles.hpp"

namespace hearthmake::typelib {
namespace {

using test::TypeLibBytes;
using ::testing::HasSubstr;

std::string Unpack(const std::string& tree, const std::string& packed) {
  TypeLibBytes table;
  table.U16(100).U32(static_cast<std::uint32_t>(tree.size())).Raw(tree);
  test::TypeLibFakeFiles files;
  files.Put("old.tlb", table.Text());
  const auto file = files.Open("old.tlb");
  PagedFile pages(*file, "old.tlb");
  return HelpWords(ByteView(pages), 0).Unpack(packed);
}

std::string Failure(const std::string& tree, const std::string& packed) {
  try {
    Unpack(tree, packed);
  } catch (const automation::Error& error) {
    EXPECT_EQ(error.Number(), 45);
    EXPECT_EQ(error.Source(), "TypeLibReader");
    return error.Description();
  }
  return {};
}

// One: "draws"; zero, one: "lines"; zero, zero: the end.
std::string Tree() {
  TypeLibBytes tree;
  tree.U8(0x80).U8(0).U8(10).U8(1).Raw("draws").U8(0);
  tree.U8(0x80).U8(0).U8(20).U8(1).Raw("lines").U8(0);
  tree.U8(0).U8(0);
  return tree.Text();
}

TEST(HelpWords, PutsOneBlankBetweenWords) {
  EXPECT_EQ(Unpack(Tree(), "\xA0"), "draws lines");        // 1 01 00
  EXPECT_EQ(Unpack(Tree(), "\x70"), "lines draws draws");  // 01 1 1 00
}

TEST(HelpWords, EndsAtTheWordThatIsNone) { EXPECT_EQ(Unpack(Tree(), "\x8F"), "draws"); }

TEST(HelpWords, EndsWithTheBits) {
  EXPECT_EQ(Unpack(Tree(), "\xFF"), "draws draws draws draws draws draws draws draws");
}

TEST(HelpWords, GivesNothingForNothing) { EXPECT_EQ(Unpack("", ""), ""); }

TEST(HelpWords, EndsWhenTheTreeIsASingleWord) { EXPECT_EQ(Unpack(std::string("\1word\0", 6), "\xFF"), ""); }

TEST(HelpWords, TurnsInCirclesNoLongerThanThereAreBits) {
  EXPECT_EQ(Unpack(std::string("\x80\0\0\x80\0\0", 6), std::string(1000, '\0')), "");
}

TEST(HelpWords, RefusesBranchesThatLeaveTheTree) {
  EXPECT_THAT(Failure(std::string("\x80\x7F\xFF\1a\0", 6), std::string(1, '\0')),
              HasSubstr("lies outside the tree of help words"));
  EXPECT_THAT(Failure(std::string("\x80\0\x05\1abc", 7), "\xFF"), HasSubstr("lies outside the tree"));
}

TEST(HelpWords, RefusesStringsWithoutMeasure) {
  const std::string tree = std::string("\x80\0\0\1", 4) + std::string(1000, 'w') + std::string(1, '\0');
  EXPECT_THAT(Failure(tree, std::string(100, '\xFF')), HasSubstr("a help string has no end"));
}

}  // namespace
}  // namespace hearthmake::typelib
