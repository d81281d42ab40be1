#include "host/sources/SourceFlagNames.hpp"

#include <gtest/gtest.h>

#include "host/HostError.hpp"

namespace hearthmake::host {
namespace {

TEST(SourceFlagNames, AreReadByNameInAnyOrderAndCase) {
  EXPECT_EQ(ParseSourceFlags("readonly"), 1);
  EXPECT_EQ(ParseSourceFlags("Recursive, READONLY"), 0x2001);
  EXPECT_EQ(ParseSourceFlags("writable,timeupdated,flat"), 0x100E);
  EXPECT_EQ(ParseSourceFlags("readonly,readonly"), 1);
  EXPECT_EQ(ParseSourceFlags("none"), 0);
}

TEST(SourceFlagNames, MayBeANumber) {
  EXPECT_EQ(ParseSourceFlags("8193"), 8193);
  EXPECT_EQ(ParseSourceFlags("&H2001"), 0x2001);
  EXPECT_EQ(ParseSourceFlags("0x2001"), 0x2001);
  EXPECT_EQ(ParseSourceFlags("-1"), -1);
}

TEST(SourceFlagNames, RefuseWhatExcludesEachOtherAndWhatIsUnknown) {
  for (const char* text :
       {"readonly,writable", "flat,recursive", "timenow,timemodified", "", "readonly,", "fast"})
    EXPECT_THROW(ParseSourceFlags(text), HostError) << text;
}

TEST(SourceFlagNames, AreWrittenAsTheyAreRead) {
  EXPECT_EQ(SourceFlagsText(0), "none");
  EXPECT_EQ(SourceFlagsText(0x2001), "readonly,recursive");
  EXPECT_EQ(SourceFlagsText(12), "timeupdated");
  EXPECT_EQ(SourceFlagsText(0x2041), "readonly,keep,recursive");
  EXPECT_EQ(SourceFlagsText(0x2011), "readonly,recursive+16");
  EXPECT_EQ(SourceFlagsText(0x80), "128");
}

}  // namespace
}  // namespace hearthmake::host
