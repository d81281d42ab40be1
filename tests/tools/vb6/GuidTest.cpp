#include "vb6/Guid.hpp"

#include <gtest/gtest.h>

namespace hearthmake::vb6 {
namespace {

TEST(Guid, IsReadInBothCasesAndWrittenInCapitals) {
  const auto guid = Guid::Parse("{00020430-0000-0000-c000-000000000046}");
  ASSERT_TRUE(guid);
  EXPECT_EQ(guid->bytes[0], 0x30);
  EXPECT_EQ(guid->bytes[8], 0xC0);
  EXPECT_EQ(guid->Text(), "{00020430-0000-0000-C000-000000000046}");
  EXPECT_FALSE(Guid::Parse("{00020430-0000-0000-c000-00000000004}"));
  EXPECT_FALSE(Guid::Parse("{0002043g-0000-0000-c000-000000000046}"));
}

}  // namespace
}  // namespace hearthmake::vb6
