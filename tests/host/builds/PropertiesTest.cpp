#include "host/builds/Properties.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "automation/Variant.hpp"
#include "foundation/Settings.hpp"
#include "host/HostError.hpp"
#include "project/Project.hpp"

namespace hearthmake::host {
namespace {

using automation::Variant;
using testing::HasSubstr;

const automation::Member& Settable(const char* name) { return FindSettable(Project::Describe(), name); }
const automation::Member& Readable(const char* name) { return FindReadable(Project::Describe(), name); }

std::vector<std::string> NamesOf(const std::vector<const automation::Member*>& members) {
  std::vector<std::string> names;
  for (const auto* member : members) names.push_back(member->name);
  return names;
}

TEST(Properties, AreThoseOfTheDeclarationThatHoldValues) {
  const auto readable = NamesOf(ReadableProperties(Project::Describe()));
  EXPECT_THAT(readable, testing::Contains("FullPath32"));
  EXPECT_THAT(readable, testing::Not(testing::Contains("References")));
  EXPECT_THAT(readable, testing::Not(testing::Contains("Compile")));
  const auto settable = NamesOf(SettableProperties(Project::Describe()));
  EXPECT_THAT(settable, testing::Contains("CompileMe"));
  EXPECT_THAT(settable, testing::Not(testing::Contains("FullPath32")));
  EXPECT_EQ(NamesOf(SettableProperties(Settings::Describe())).size(), 11U);
}

TEST(Properties, AreFoundWithoutRegardToCase) {
  EXPECT_EQ(Settable("compileme").name, "CompileMe");
  EXPECT_THROW(Settable("Id"), HostError);
  EXPECT_THROW(Readable("Nope"), HostError);
}

TEST(Properties, ReadFlagsInTheUsualWords) {
  for (const char* yes : {"true", "TRUE", "yes", "on", "1", "-1"}) {
    EXPECT_TRUE(automation::ToBoolean(ParseValue(Settable("CompileMe"), yes))) << yes;
  }
  for (const char* no : {"false", "No", "off", "0"}) {
    EXPECT_FALSE(automation::ToBoolean(ParseValue(Settable("CompileMe"), no))) << no;
  }
  EXPECT_THROW(ParseValue(Settable("CompileMe"), "2"), HostError);
}

TEST(Properties, ReadAndWriteEnumerationsByName) {
  const automation::Member& mode = Settable("CompatibleMode");
  EXPECT_EQ(automation::ToLong(ParseValue(mode, "BinaryCompatibility")), 2);
  EXPECT_EQ(automation::ToLong(ParseValue(mode, "1")), 1);
  EXPECT_THROW(ParseValue(mode, "3"), HostError);
  EXPECT_EQ(ValueText(Readable("CompatibleMode"), Variant::FromLong(2)), "BinaryCompatibility");
  EXPECT_EQ(ValueText(Readable("CompatibleMode"), Variant::FromLong(7)), "7");
}

TEST(Properties, WriteAddressesDatesAndFlags) {
  EXPECT_EQ(ValueText(Readable("DllBaseAddress"), Variant::FromLong(0x11000000)), "&H11000000");
  EXPECT_EQ(ValueText(Readable("LastCompiled"), Variant::FromDate(0)), "");
  EXPECT_EQ(ValueText(Readable("LastCompiled"), Variant::FromDate(36975.5)), "2001-03-25 12:00:00");
  EXPECT_EQ(ValueText(Readable("CompileMe"), Variant::FromBoolean(true)), "True");
}

TEST(Properties, KnowWhichTextsArePaths) {
  EXPECT_EQ(PathKindOf("VBExe"), PathKind::Absolute);
  EXPECT_EQ(PathKindOf("Path32"), PathKind::OfProject);
  EXPECT_EQ(PathKindOf("Command32"), PathKind::None);
}

}  // namespace
}  // namespace hearthmake::host
