#include "adapters/win32/Win32TypeLibReader.hpp"

#include <gtest/gtest.h>

#include "adapters/typelib/TypeLibFileReader.hpp"
#include "adapters/win32/Win32FileSystem.hpp"
#include "automation/Error.hpp"
#include "support/Win32Folder.hpp"

namespace hearthmake::win32 {
namespace {

std::string Data(const std::string& name) {
  return std::string(SOURCE_DIRECTORY) + "/tests/adapters/typelib/data/" + name;
}

int ErrorNumberOf(const std::string& path) {
  try {
    Win32TypeLibReader().Read(path);
  } catch (const automation::Error& error) {
    EXPECT_EQ(error.Source(), "TypeLibReader");
    EXPECT_NE(error.Description().find(path), std::string::npos) << error.Description();
    return error.Number();
  }
  return 0;
}

TEST(Win32TypeLibReader, ReadsWhatIdentifiesALibrary) {
  const platform::TypeLibInfo info = Win32TypeLibReader().Read(Data("Shapes.tlb"));
  EXPECT_EQ(info.name, "Shapes");
  EXPECT_EQ(info.guid.size(), 38U);
}

// The system's loader and our own reader must tell the same.
TEST(Win32TypeLibReader, AgreesWithTheReaderOfOurOwn) {
  Win32TypeLibReader systems;
  typelib::TypeLibFileReader ours(std::make_shared<Win32FileSystem>());
  for (const char* name : {"Shapes.tlb", "Bare.tlb"}) {
    SCOPED_TRACE(name);
    const auto a = systems.Read(Data(name));
    const auto b = ours.Read(Data(name));
    EXPECT_EQ(a.guid, b.guid);
    EXPECT_EQ(a.majorVersion, b.majorVersion);
    EXPECT_EQ(a.minorVersion, b.minorVersion);
    EXPECT_EQ(a.locale, b.locale);
    EXPECT_EQ(a.name, b.name);
    EXPECT_EQ(a.helpString, b.helpString);
    const auto types = systems.ReadTypes(Data(name));
    const auto ourTypes = ours.ReadTypes(Data(name));
    ASSERT_EQ(types.size(), ourTypes.size());
    for (std::size_t i = 0; i < types.size(); ++i) {
      SCOPED_TRACE(types[i].name);
      EXPECT_EQ(types[i].name, ourTypes[i].name);
      EXPECT_EQ(types[i].kind, ourTypes[i].kind);
      EXPECT_EQ(types[i].guid, ourTypes[i].guid);
      EXPECT_EQ(types[i].flags, ourTypes[i].flags);
      EXPECT_EQ(types[i].majorVersion, ourTypes[i].majorVersion);
      EXPECT_EQ(types[i].minorVersion, ourTypes[i].minorVersion);
    }
  }
}

TEST(Win32TypeLibReader, SaysWhatIsWrong) {
  const support::Win32Folder folder;
  EXPECT_EQ(ErrorNumberOf(folder.Path("none.tlb")), 53);
  EXPECT_EQ(ErrorNumberOf(folder.Path("no\\none.tlb")), 76);
  EXPECT_EQ(ErrorNumberOf(folder.MakeFile("text.tlb", "no library at all")), 45);
}

}  // namespace
}  // namespace hearthmake::win32
