#include "adapters/typelib/ByteView.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

#include "automation/Error.hpp"
#include "support/TypeLibFakeFiles.hpp"

namespace hearthmake::typelib {
namespace {

class ByteViewTest : public ::testing::Test {
 protected:
  static std::string Failure(const std::function<void()>& action) {
    try {
      action();
    } catch (const automation::Error& error) {
      EXPECT_EQ(error.Number(), 45);
      EXPECT_EQ(error.Source(), "TypeLibReader");
      return error.Description();
    }
    return {};
  }

  std::unique_ptr<platform::RandomAccessFile> Open() {
    files.Put("f", "\x01\x02\x03\x84\x05\x06\x07\x08");
    return files.Open("f");
  }

  test::TypeLibFakeFiles files;
  std::unique_ptr<platform::RandomAccessFile> file = Open();
  PagedFile pages{*file, "C:\\f.tlb"};
  ByteView view{pages};
};

TEST_F(ByteViewTest, ReadsLittleEndianNumbers) {
  EXPECT_EQ(view.U8(3, "x"), 0x84);
  EXPECT_EQ(view.U16(0, "x"), 0x0201);
  EXPECT_EQ(view.U32(0, "x"), 0x84030201u);
  EXPECT_EQ(view.Bytes(4, 4, "x"), "\x05\x06\x07\x08");
}

TEST_F(ByteViewTest, NamesFileAndPlaceOfWhatLiesOutside) {
  EXPECT_EQ(Failure([&] { view.U32(5, "the header"); }),
            "C:\\f.tlb is cut off: the header at 0x5 lies outside the file");
  EXPECT_EQ(Failure([&] { view.U8(UINT64_MAX, "the header"); }),
            "C:\\f.tlb is cut off: the header at 0xFFFFFFFFFFFFFFFF lies outside the file");
}

TEST_F(ByteViewTest, KeepsPartsWithinTheirBounds) {
  const ByteView part = view.Part(2, 4, "the table");
  EXPECT_EQ(part.Size(), 4u);
  EXPECT_EQ(part.U8(0, "a name"), 0x03);
  EXPECT_EQ(part.Part(2, 2, "a row").U16(0, "a field"), 0x0605);
  EXPECT_EQ(Failure([&] { part.U8(4, "a name"); }),
            "C:\\f.tlb is damaged: a name at 0x6 lies outside the table");
  EXPECT_EQ(Failure([&] { view.Part(4, 5, "the table"); }),
            "C:\\f.tlb is cut off: the table at 0x4 lies outside the file");
  EXPECT_EQ(Failure([&] { view.Part(8, 0, "the table"); }), "");
}

TEST_F(ByteViewTest, FailsWithThePlaceInTheFile) {
  EXPECT_EQ(Failure([&] { view.Part(2, 4, "the table").FailAt(1, "is damaged: there is a worm"); }),
            "C:\\f.tlb is damaged: there is a worm at 0x3");
}

}  // namespace
}  // namespace hearthmake::typelib
