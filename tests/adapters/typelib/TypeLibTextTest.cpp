#include "adapters/typelib/TypeLibText.hpp"

#include <gtest/gtest.h>

#include <string>

namespace hearthmake::typelib {
namespace {

TEST(TypeLibText, FormatsGuidsInRegistryForm) {
  const GuidBytes dispatch = {0x00, 0x04, 0x02, 0x00, 0, 0, 0, 0, 0xC0, 0, 0, 0, 0, 0, 0, 0x46};
  EXPECT_EQ(FormatGuid(dispatch), "{00020400-0000-0000-C000-000000000046}");
  const GuidBytes counted = {0x33, 0x22, 0x11, 0x00, 0x55, 0x44, 0x77, 0x66,
                             0x88, 0x99, 0xAA, 0xBB, 0xCC, 0xDD, 0xEE, 0xFF};
  EXPECT_EQ(FormatGuid(counted), "{00112233-4455-6677-8899-AABBCCDDEEFF}");
}

TEST(TypeLibText, ReadsTextAsWindows1252) {
  EXPECT_EQ(DecodeText("plain"), "plain");
  EXPECT_EQ(DecodeText("\xE9\xFF"), "\u00E9\u00FF");
  EXPECT_EQ(DecodeText("\x80\x96\x9F"), "\u20AC\u2013\u0178");
}

TEST(TypeLibText, KeepsTheUndefinedBytesAsControls) {
  EXPECT_EQ(DecodeText("\x81\x8D\x8F\x90\x9D"), "\xC2\x81\xC2\x8D\xC2\x8F\xC2\x90\xC2\x9D");
}

}  // namespace
}  // namespace hearthmake::typelib
