#include "adapters/posix/RegistryData.hpp"

#include <gtest/gtest.h>

namespace hearthmake::posix {
namespace {

using namespace std::string_literals;
using platform::RegistryType;

TEST(RegistryData, TakesTheFinalZeroOffTexts) {
  EXPECT_EQ(DecodeRegistryValue(1, "a\0\0\0"s).data, "a");
  EXPECT_EQ(DecodeRegistryValue(1, "a\0"s).data, "a");
  EXPECT_EQ(DecodeRegistryValue(2, "a\0\0\0\0\0"s).data, "a\0"s);
  EXPECT_EQ(DecodeRegistryValue(3, "a\0"s).data, "a\0"s);
  EXPECT_EQ(EncodeRegistryValue({RegistryType::String, "a"}), "a\0\0\0"s);
}

TEST(RegistryData, EndsEveryPartOfAListWithAZero) {
  EXPECT_EQ(NormalizeMultiString(""), "");
  EXPECT_EQ(NormalizeMultiString("\0"s), "");
  EXPECT_EQ(NormalizeMultiString("a"), "a\0"s);
  EXPECT_EQ(NormalizeMultiString("a\0b"s), "a\0b\0"s);
  EXPECT_EQ(NormalizeMultiString("a\0b\0\0"s), "a\0b\0"s);
}

TEST(RegistryData, ReadsAndWritesHexBytes) {
  EXPECT_EQ(ParseHexBytes("01,fF , 2,\\\r\n  a0"), "\x01\xFF\x02\xA0");
  EXPECT_EQ(ParseHexBytes(""), "");
  EXPECT_EQ(ParseHexBytes("01,02,"), "\x01\x02");
  EXPECT_EQ(ParseHexBytes("012"), std::nullopt);
  EXPECT_EQ(ParseHexBytes("0g"), std::nullopt);
  const std::string bytes(100, '\x5A');
  std::string text = "\"name\"=hex:";
  AppendHexBytes(text, bytes);
  EXPECT_LT(text.find('\n'), 82U);
  EXPECT_EQ(ParseHexBytes(text.substr(11)), bytes);
}

TEST(RegistryData, ReadsTypesAndNumbers) {
  const auto type = [](std::string_view text) { return TakeHexType(text); };
  EXPECT_EQ(type("hex:01"), 3U);
  EXPECT_EQ(type("hex(b):01"), 11U);
  EXPECT_EQ(type("hex(ffffffff):"), 0xFFFFFFFF);
  EXPECT_EQ(type("hex():"), std::nullopt);
  EXPECT_EQ(type("hex(123456789):"), std::nullopt);
  EXPECT_EQ(type("hex(1"), std::nullopt);
  EXPECT_EQ(ParseHexNumber("0000002a"), 42U);
  EXPECT_EQ(ParseHexNumber("-1"), std::nullopt);
  EXPECT_EQ(ParseHexNumber("000000001"), std::nullopt);
  EXPECT_EQ(HexTypePrefix(RegistryType::Binary), "hex:");
  EXPECT_EQ(HexTypePrefix(RegistryType::QWord), "hex(b):");
}

}  // namespace
}  // namespace hearthmake::posix
