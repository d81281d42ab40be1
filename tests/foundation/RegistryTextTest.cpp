#include "foundation/RegistryText.hpp"

#include <gtest/gtest.h>

#include "support/Workbench.hpp"

namespace hearthmake {
namespace {

using platform::RegistryRoot;
using platform::RegistryType;
using support::Workbench;

constexpr const char* kKey = "Software\\Hearthmake";

struct Reading {
  bool found = false;
  std::string text;
};

Reading Read(const Workbench& bench, RegistryType type, const std::string& data,
             std::string before = "before") {
  bench.registry->Set(RegistryRoot::CurrentUser, kKey, "value", {type, data});
  Reading reading{false, std::move(before)};
  reading.found = GetRegistryValue(RegistryRoot::CurrentUser, kKey, "value", reading.text);
  return reading;
}

TEST(RegistryText, ReadsAString) {
  const Workbench bench;
  const Reading reading = Read(bench, RegistryType::String, "C:\\VB98\\Größe");
  EXPECT_TRUE(reading.found);
  EXPECT_EQ(reading.text, "C:\\VB98\\Größe");
}

TEST(RegistryText, AnEmptyNameReadsTheDefaultValue) {
  const Workbench bench;
  bench.registry->Set(RegistryRoot::ClassesRoot, "Some.Class", "", {RegistryType::String, "default"});
  std::string text;
  EXPECT_TRUE(GetRegistryValue(RegistryRoot::ClassesRoot, "some.class", "", text));
  EXPECT_EQ(text, "default");
}

TEST(RegistryText, AMissingKeyEmptiesTheResult) {
  const Workbench bench;
  std::string text = "before";
  EXPECT_FALSE(GetRegistryValue(RegistryRoot::CurrentUser, "No\\Such\\Key", "value", text));
  EXPECT_EQ(text, "");
}

TEST(RegistryText, AMissingValueEmptiesTheResult) {
  const Workbench bench;
  bench.registry->Set(RegistryRoot::CurrentUser, kKey, "other", {RegistryType::String, "x"});
  std::string text = "before";
  EXPECT_FALSE(GetRegistryValue(RegistryRoot::CurrentUser, kKey, "value", text));
  EXPECT_EQ(text, "");
}

TEST(RegistryText, AStringFillsTheBufferUpToItsFinalZero) {
  const Workbench bench;
  EXPECT_EQ(Read(bench, RegistryType::String, std::string(1023, 'x')).text, std::string(1023, 'x'));
  const Reading reading = Read(bench, RegistryType::String, std::string(1024, 'x'));
  EXPECT_FALSE(reading.found);
  EXPECT_EQ(reading.text, "");
}

TEST(RegistryText, ANumbersSmallBytesGiveOneDigitEach) {
  const Workbench bench;
  EXPECT_EQ(Read(bench, RegistryType::DWord, {2, 1, 0, 0}, "").text, "18") << "&H0102";
}

TEST(RegistryText, ANumberOfLargeBytesReadsAsItIs) {
  const Workbench bench;
  EXPECT_EQ(Read(bench, RegistryType::DWord, "\x12\x34\x56\x78", "").text, std::to_string(0x78563412));
  EXPECT_EQ(Read(bench, RegistryType::DWord, "\xFF\xFF\xFF\xFF", "").text, "-1");
  EXPECT_EQ(Read(bench, RegistryType::DWord, std::string(4, '\0'), "").text, "0");
}

TEST(RegistryText, ANumberIsWrittenBehindWhatTheResultHeld) {
  const Workbench bench;
  EXPECT_EQ(Read(bench, RegistryType::DWord, {2, 0, 0, 0}, "1").text, std::to_string(0x1002));
}

TEST(RegistryText, OtherTypesLeaveTheResultAsItWas) {
  const Workbench bench;
  for (const RegistryType type :
       {RegistryType::Binary, RegistryType::ExpandString, RegistryType::MultiString}) {
    const Reading reading = Read(bench, type, std::string("ab\0", 3));
    EXPECT_TRUE(reading.found);
    EXPECT_EQ(reading.text, "before");
  }
}

TEST(RegistryText, BinaryDataMayFillTheWholeBuffer) {
  const Workbench bench;
  EXPECT_TRUE(Read(bench, RegistryType::Binary, std::string(1024, '\xE4')).found);
  EXPECT_FALSE(Read(bench, RegistryType::Binary, std::string(1025, '\xE4')).found);
}

}  // namespace
}  // namespace hearthmake
