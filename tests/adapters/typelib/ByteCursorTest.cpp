#include "adapters/typelib/ByteCursor.hpp"

#include <gtest/gtest.h>

#include <string>

#include "automation/Error.hpp"
#include "support/TypeLibFakeFiles.hpp"

namespace hearthmake::typelib {
namespace {

TEST(ByteCursor, ReadsOneFieldAfterTheOther) {
  test::TypeLibFakeFiles files;
  files.Put("f", std::string("??\x01\x02skip\x03\0\0\x80name", 16));
  const auto file = files.Open("f");
  PagedFile pages(*file, "f");
  const ByteView view(pages);
  ByteCursor cursor(view, 2, "a row");
  EXPECT_EQ(cursor.U16(), 0x0201);
  cursor.Skip(4);
  EXPECT_EQ(cursor.U32(), 0x80000003u);
  EXPECT_EQ(cursor.Bytes(4), "name");
  EXPECT_EQ(cursor.Position(), 16u);
}

TEST(ByteCursor, SaysWhatIsCutOff) {
  test::TypeLibFakeFiles files;
  files.Put("f", "abcd");
  const auto file = files.Open("f");
  PagedFile pages(*file, "C:\\f.tlb");
  const ByteView view(pages);
  ByteCursor cursor(view, 0, "a row");
  cursor.Skip(100);
  try {
    cursor.U16();
    FAIL();
  } catch (const automation::Error& error) {
    EXPECT_EQ(error.Description(), "C:\\f.tlb is cut off: a row at 0x64 lies outside the file");
  }
}

}  // namespace
}  // namespace hearthmake::typelib
