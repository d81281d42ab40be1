#include "adapters/typelib/MsftTypeLib.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "automation/Error.hpp"
#include "support/TypeLibBytes.hpp"
#include "support/TypeLibFakeFiles.hpp"
#include "support/TypeLibFixtures.hpp"

namespace hearthmake::typelib {
namespace {

using platform::TypeDescription;
using platform::TypeKind;
using platform::TypeLibInfo;
using test::ReadTypeLibFixture;
using test::U32At;
using test::WithU32;
using ::testing::HasSubstr;

constexpr char kPath[] = "C:\\lib\\shapes.tlb";

template <typename Use>
auto With(const std::string& bytes, const Use& use) {
  test::TypeLibFakeFiles files;
  files.Put(kPath, bytes);
  const auto file = files.Open(kPath);
  PagedFile pages(*file, kPath);
  return use(MsftTypeLib(ByteView(pages)));
}

TypeLibInfo Info(const std::string& bytes) {
  return With(bytes, [](const MsftTypeLib& library) { return library.Info(); });
}

std::vector<TypeDescription> Types(const std::string& bytes) {
  return With(bytes, [](const MsftTypeLib& library) { return library.Types(); });
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

// Where the directory entry of a segment stands.
std::size_t SegmentEntry(const std::string& bytes, unsigned segment) {
  return 0x54 + U32At(bytes, 0x20) * 4 + segment * 16;
}

TEST(MsftTypeLib, ReadsWhatIdentifiesTheLibrary) {
  const TypeLibInfo info = Info(ReadTypeLibFixture("Shapes.tlb"));
  EXPECT_EQ(info.guid, "{5A6D3E10-0B1C-4F5E-9A7B-1C2D3E4F5A60}");
  EXPECT_EQ(info.majorVersion, 3);
  EXPECT_EQ(info.minorVersion, 18);
  EXPECT_EQ(info.locale, 0x407u);
  EXPECT_EQ(info.flags, 2 | 4 | 8);
  EXPECT_EQ(info.name, "Shapes");
  EXPECT_EQ(info.helpString, "Shapes to draw");
}

TEST(MsftTypeLib, ReadsALibraryWithoutAttributes) {
  const TypeLibInfo info = Info(ReadTypeLibFixture("Bare.tlb"));
  EXPECT_EQ(info.guid, "{0F1E2D3C-4B5A-6978-8796-A5B4C3D2E1F0}");
  EXPECT_EQ(info.majorVersion, 0);
  EXPECT_EQ(info.minorVersion, 0);
  EXPECT_EQ(info.locale, 0u);
  EXPECT_EQ(info.flags, 8);
  EXPECT_EQ(info.name, "Bare");
  EXPECT_EQ(info.helpString, "");
}

TEST(MsftTypeLib, ReadsALibraryWithAHelpDll) {
  const TypeLibInfo info = Info(ReadTypeLibFixture("HelpDll.tlb"));
  EXPECT_EQ(info.guid, "{7C0FFEE0-1234-4321-ABCD-0123456789AB}");
  EXPECT_EQ(info.majorVersion, 65535);
  EXPECT_EQ(info.minorVersion, 65535);
  EXPECT_EQ(info.flags, 1 | 8);
  EXPECT_EQ(info.helpString, "Has a help DLL");
}

TEST(MsftTypeLib, GivesALibraryWithoutAGuidTheEmptyOne) {
  const std::string bytes = WithU32(ReadTypeLibFixture("Bare.tlb"), 0x08, 0xFFFFFFFF);
  EXPECT_EQ(Info(bytes).guid, "{00000000-0000-0000-0000-000000000000}");
}

TEST(MsftTypeLib, ListsTypesInLibraryOrder) {
  const std::vector<TypeDescription> types = Types(ReadTypeLibFixture("Shapes.tlb"));
  struct Expected {
    TypeKind kind;
    const char* guid;
    const char* name;
    const char* helpString;
    int flags;
    int majorVersion;
    int minorVersion;
  };
  const std::vector<Expected> expected = {
      {TypeKind::Enum, "{5A6D3E10-0B1C-4F5E-9A7B-1C2D3E4F5A61}", "Colour", "Colours", 0, 0, 0},
      {TypeKind::Record, "{5A6D3E10-0B1C-4F5E-9A7B-1C2D3E4F5A62}", "Place", "A place", 0, 2, 1},
      {TypeKind::Union, "", "Word", "", 0, 0, 0},
      {TypeKind::Alias, "", "Handle", "", 0, 0, 0},
      {TypeKind::Module, "{5A6D3E10-0B1C-4F5E-9A7B-1C2D3E4F5A63}", "Functions", "Functions", 0, 0, 0},
      {TypeKind::Interface, "{5A6D3E10-0B1C-4F5E-9A7B-1C2D3E4F5A64}", "Drawable", "Draws", 0x10, 1, 2},
      {TypeKind::Dispatch, "{5A6D3E10-0B1C-4F5E-9A7B-1C2D3E4F5A65}", "_Circle", "A circle's members", 0x10C0,
       0, 0},
      {TypeKind::Dispatch, "{5A6D3E10-0B1C-4F5E-9A7B-1C2D3E4F5A66}", "__Circle", "What happens to a circle",
       0x1000, 0, 0},
      {TypeKind::CoClass, "{5A6D3E10-0B1C-4F5E-9A7B-1C2D3E4F5A67}", "Circle", "A circle", 2, 1, 0},
  };
  ASSERT_EQ(types.size(), expected.size());
  for (std::size_t i = 0; i < types.size(); ++i) {
    EXPECT_EQ(types[i].kind, expected[i].kind) << i;
    EXPECT_EQ(types[i].guid, expected[i].guid) << i;
    EXPECT_EQ(types[i].name, expected[i].name) << i;
    EXPECT_EQ(types[i].helpString, expected[i].helpString) << i;
    EXPECT_EQ(types[i].flags, expected[i].flags) << i;
    EXPECT_EQ(types[i].majorVersion, expected[i].majorVersion) << i;
    EXPECT_EQ(types[i].minorVersion, expected[i].minorVersion) << i;
  }
}

TEST(MsftTypeLib, SaysWhichTableIsCutOff) {
  const std::string bytes = ReadTypeLibFixture("Bare.tlb");
  EXPECT_EQ(Failure(bytes.substr(0, 0x20)),
            std::string(kPath) + " is cut off: the type library's header at 0x20 lies outside the file");
  EXPECT_EQ(Failure(WithU32(bytes, SegmentEntry(bytes, 7), 0x7FFFFFFF)),
            std::string(kPath) + " is cut off: the name table at 0x7FFFFFFF lies outside the file");
}

TEST(MsftTypeLib, SaysThatATextLiesOutsideItsTable) {
  const std::string bytes = ReadTypeLibFixture("Shapes.tlb");
  EXPECT_THAT(Failure(WithU32(bytes, 0x24, 0x100000)), HasSubstr("is damaged: a string at 0x"));
  EXPECT_THAT(Failure(WithU32(bytes, 0x38, 0x100000)), HasSubstr("lies outside the name table"));
  EXPECT_THAT(Failure(WithU32(bytes, 0x08, 0x100000)), HasSubstr("lies outside the GUID table"));
}

TEST(MsftTypeLib, RefusesASegmentDirectoryWithoutItsMark) {
  const std::string bytes = ReadTypeLibFixture("Bare.tlb");
  EXPECT_THAT(Failure(WithU32(bytes, SegmentEntry(bytes, 0) + 12, 0)),
              HasSubstr("there is no segment directory"));
  EXPECT_THAT(Failure(WithU32(bytes, 0x20, 0)), HasSubstr("there is no segment directory"));
}

TEST(MsftTypeLib, RefusesMoreTypesThanTheTableHas) {
  std::string bytes = ReadTypeLibFixture("Bare.tlb");
  bytes = WithU32(bytes, SegmentEntry(bytes, 0) + 4, 0x63);
  EXPECT_THAT(Failure(bytes), HasSubstr("lies outside the type table"));
}

TEST(MsftTypeLib, RefusesUnknownKindsOfTypes) {
  const std::string bytes = ReadTypeLibFixture("Bare.tlb");
  const std::size_t table = U32At(bytes, SegmentEntry(bytes, 0));
  EXPECT_THAT(Failure(WithU32(bytes, table, 0x2009)), HasSubstr("a type of the unknown kind 9"));
}

TEST(MsftTypeLib, SurvivesBeingCutOffAtEveryByte) {
  for (const char* name : {"Shapes.tlb", "Bare.tlb", "HelpDll.tlb"}) {
    const std::string bytes = ReadTypeLibFixture(name);
    const std::size_t strings = SegmentEntry(bytes, 8) + (name[0] == 'H' ? 4 : 0);
    const std::size_t needed =
        U32At(bytes, strings) == 0xFFFFFFFF ? 0 : U32At(bytes, strings) + U32At(bytes, strings + 4);
    for (std::size_t size = 4; size < bytes.size(); ++size) {
      const std::string failure = Failure(bytes.substr(0, size));
      if (size < needed) {
        EXPECT_THAT(failure, HasSubstr("is cut off")) << name << " " << size;
      }
    }
  }
}

TEST(MsftTypeLib, SurvivesLyingFields) {
  for (const char* name : {"Shapes.tlb", "HelpDll.tlb"}) {
    const std::string bytes = ReadTypeLibFixture(name);
    for (std::size_t offset = 4; offset + 4 <= bytes.size(); ++offset) {
      for (const std::uint32_t lie : {0u, 0xFFFFFFFFu, 0x7FFFFFFFu, 0x80000000u, 0x10000u}) {
        Failure(WithU32(bytes, offset, lie));
      }
    }
  }
}

}  // namespace
}  // namespace hearthmake::typelib
