#include "adapters/typelib/SltgTypeLib.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "automation/Error.hpp"
#include "support/TypeLibBytes.hpp"
#include "support/TypeLibFakeFiles.hpp"
#include "support/TypeLibSltgWriter.hpp"

namespace hearthmake::typelib {
namespace {

using platform::TypeDescription;
using platform::TypeKind;
using platform::TypeLibInfo;
using test::TypeLibSltgWriter;
using test::U32At;
using test::WithU16;
using test::WithU32;
using ::testing::HasSubstr;

constexpr char kPath[] = "C:\\lib\\old.olb";

TypeLibSltgWriter Shapes() {
  TypeLibSltgWriter writer;
  writer.guid = {0x10, 0x3E, 0x6D, 0x5A, 0x1C, 0x0B, 0x5E, 0x4F, 0x9A, 0x7B, 1, 2, 3, 4, 5, 6};
  writer.name = "OldShapes";
  writer.helpString = "Old shapes to draw";
  writer.helpFile = "shapes.hlp";
  writer.locale = 0x409;
  writer.flags = 2;
  writer.majorVersion = 1;
  writer.minorVersion = 5;
  writer.types = {
      {0, "Colour", "Colours", {1}, 0, 0, 0},
      {3, "Drawable", "Draws a circle", {2}, 0x10, 1, 2},
      {3, "_Circle", "The members of a circle", {3}, 0x1040, 0, 0},
      {5, "Circle", "", {}, 2, 3, 4},
  };
  return writer;
}

template <typename Use>
auto With(const std::string& bytes, const Use& use) {
  test::TypeLibFakeFiles files;
  files.Put(kPath, bytes);
  const auto file = files.Open(kPath);
  PagedFile pages(*file, kPath);
  return use(SltgTypeLib(ByteView(pages)));
}

TypeLibInfo Info(const std::string& bytes) {
  return With(bytes, [](const SltgTypeLib& library) { return library.Info(); });
}

std::vector<TypeDescription> Types(const std::string& bytes) {
  return With(bytes, [](const SltgTypeLib& library) { return library.Types(); });
}

// The text of the error that reading everything raises; empty when there is none.
std::string Failure(const std::string& bytes) {
  try {
    Info(bytes);
    Types(bytes);
  } catch (const automation::Error& error) {
    EXPECT_EQ(error.Number(), 45);
    EXPECT_EQ(error.Source(), "TypeLibReader");
    EXPECT_THAT(error.Description(), HasSubstr(kPath));
    return error.Description();
  }
  return {};
}

void ExpectShapes(const std::string& bytes) {
  const TypeLibInfo info = Info(bytes);
  EXPECT_EQ(info.guid, "{5A6D3E10-0B1C-4F5E-9A7B-010203040506}");
  EXPECT_EQ(info.majorVersion, 1);
  EXPECT_EQ(info.minorVersion, 5);
  EXPECT_EQ(info.locale, 0u);  // English of the United States is the language of comparison
  EXPECT_EQ(info.flags, 2 | 8);
  EXPECT_EQ(info.name, "OldShapes");
  EXPECT_EQ(info.helpString, "Old shapes to draw");

  const std::vector<TypeDescription> types = Types(bytes);
  ASSERT_EQ(types.size(), 4u);
  EXPECT_EQ(types[0].kind, TypeKind::Enum);
  EXPECT_EQ(types[0].name, "Colour");
  EXPECT_EQ(types[0].helpString, "Colours");
  EXPECT_EQ(types[0].guid, "{00000001-0000-0000-0000-000000000000}");
  EXPECT_EQ(types[1].kind, TypeKind::Interface);
  EXPECT_EQ(types[1].name, "Drawable");
  EXPECT_EQ(types[1].helpString, "Draws a circle");
  EXPECT_EQ(types[1].flags, 0x10);
  EXPECT_EQ(types[1].majorVersion, 1);
  EXPECT_EQ(types[1].minorVersion, 2);
  EXPECT_EQ(types[2].kind, TypeKind::Dispatch);  // it is dual
  EXPECT_EQ(types[2].name, "_Circle");
  EXPECT_EQ(types[2].helpString, "The members of a circle");
  EXPECT_EQ(types[2].flags, 0x1040);
  EXPECT_EQ(types[3].kind, TypeKind::CoClass);
  EXPECT_EQ(types[3].name, "Circle");
  EXPECT_EQ(types[3].helpString, "");
  EXPECT_EQ(types[3].guid, "");
  EXPECT_EQ(types[3].flags, 2);
  EXPECT_EQ(types[3].majorVersion, 3);
  EXPECT_EQ(types[3].minorVersion, 4);
}

TEST(SltgTypeLib, ReadsLibraryAndTypes) { ExpectShapes(Shapes().Write()); }

TEST(SltgTypeLib, FollowsTheChainOfBlocks) {
  TypeLibSltgWriter writer = Shapes();
  writer.reversedTable = true;
  ExpectShapes(writer.Write());
}

TEST(SltgTypeLib, ReadsNamesBehindTheLongHeading) {
  TypeLibSltgWriter writer = Shapes();
  writer.longNameHeading = true;
  ExpectShapes(writer.Write());
}

TEST(SltgTypeLib, TakesALanguageWithoutCountryAsTheLibrarysOwn) {
  TypeLibSltgWriter writer = Shapes();
  writer.locale = 0x07;
  EXPECT_EQ(Info(writer.Write()).locale, 7u);
}

TEST(SltgTypeLib, ReadsALibraryWithoutTypesAndTexts) {
  TypeLibSltgWriter writer;
  writer.name = "Bare";
  const TypeLibInfo info = Info(writer.Write());
  EXPECT_EQ(info.guid, "{00000000-0000-0000-0000-000000000000}");
  EXPECT_EQ(info.name, "Bare");
  EXPECT_EQ(info.helpString, "");
  EXPECT_TRUE(Types(writer.Write()).empty());
}

TEST(SltgTypeLib, RefusesAChainThatNeverEnds) {
  std::string bytes = Shapes().Write();
  bytes = WithU16(bytes, 0x24 + 6, 1);  // the first block leads to itself
  EXPECT_THAT(Failure(bytes), HasSubstr("the chain of blocks leads to no library block"));
  EXPECT_THAT(Failure(WithU16(bytes, 0x0A, 99)), HasSubstr("the chain of blocks leads to no library block"));
  EXPECT_THAT(Failure(WithU16(bytes, 0x04, 0)), HasSubstr("the chain of blocks leads to no library block"));
}

TEST(SltgTypeLib, RefusesBlocksThatAreNotWhatTheyShouldBe) {
  const std::string bytes = Shapes().Write();
  const std::size_t firstType = bytes.find("\x01\x05\xFF\xFF");
  const std::size_t library = bytes.find("\xCC\x51");
  ASSERT_NE(firstType, std::string::npos);
  ASSERT_NE(library, std::string::npos);
  EXPECT_THAT(Failure(WithU16(bytes, firstType, 0)), HasSubstr("there is no header of the type Colour"));
  EXPECT_THAT(Failure(WithU16(bytes, library, 0)), HasSubstr("there is no library block"));
  std::string unknownKind = bytes;
  unknownKind[firstType + 0x1D] = 9;
  EXPECT_THAT(Failure(unknownKind), HasSubstr("a type of the unknown kind 9"));
}

TEST(SltgTypeLib, RefusesAListThatDoesNotGoWithTheBlocks) {
  std::string bytes = Shapes().Write();
  // The list's count stands behind the hash table of the library block.
  const std::size_t count = bytes.find(
      "\x04\x00\x0A\x00"
      "AAAAAAAAAA",
      0, 14);
  ASSERT_NE(count, std::string::npos);
  EXPECT_THAT(Failure(WithU16(bytes, count, 5)), HasSubstr("4 blocks of types don't go with the list of 5"));
}

TEST(SltgTypeLib, SurvivesBeingCutOffAtEveryByte) {
  const std::string bytes = Shapes().Write();
  const std::size_t names = bytes.find("Circle\0", bytes.find("_Circle\0") + 8) + 7;
  for (std::size_t size = 4; size < bytes.size(); ++size) {
    const std::string failure = Failure(bytes.substr(0, size));
    EXPECT_EQ(failure.empty(), size >= names) << size << " " << failure;
  }
}

TEST(SltgTypeLib, SurvivesLyingFields) {
  const std::string bytes = Shapes().Write();
  for (std::size_t offset = 4; offset + 4 <= bytes.size(); ++offset) {
    for (const std::uint32_t lie : {0u, 0xFFFFFFFFu, 0x7FFFFFFFu, 0x80000000u, 0x10000u}) {
      Failure(WithU32(bytes, offset, lie));
    }
  }
}

}  // namespace
}  // namespace hearthmake::typelib
