#include "vb6/Windows1252.hpp"

#include <gtest/gtest.h>

namespace hearthmake::vb6 {
namespace {

TEST(Windows1252, KeepsEveryByte) {
  std::string all;
  for (int byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);
  EXPECT_EQ(ToWindows1252(ToUtf8(all)), all);
  EXPECT_EQ(ToUtf8("\x80 Stra\xDF"
                   "e"),
            "€ Straße");
  EXPECT_EQ(ToWindows1252("\xD0\x96 \xFF"), "? ?");
}

}  // namespace
}  // namespace hearthmake::vb6
