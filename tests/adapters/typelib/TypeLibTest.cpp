#include "adapters/typelib/TypeLib.hpp"

#include <gtest/gtest.h>

#include <string>

#include "support/TypeLibFakeFiles.hpp"
#include "support/TypeLibFixtures.hpp"
#include "support/TypeLibSltgWriter.hpp"

namespace hearthmake::typelib {
namespace {

// The name of the library that is recognized; "none" when there is none.
std::string Recognize(const std::string& bytes) {
  test::TypeLibFakeFiles files;
  files.Put("f", bytes);
  const auto file = files.Open("f");
  PagedFile pages(*file, "f");
  const auto library = TypeLib::Recognize(ByteView(pages));
  return library == nullptr ? "none" : library->Info().name;
}

TEST(TypeLib, RecognizesBothFormatsByTheirMarks) {
  test::TypeLibSltgWriter old;
  old.name = "Old";
  EXPECT_EQ(Recognize(test::ReadTypeLibFixture("Bare.tlb")), "Bare");
  EXPECT_EQ(Recognize(old.Write()), "Old");
}

TEST(TypeLib, RecognizesNothingElse) {
  EXPECT_EQ(Recognize(""), "none");
  EXPECT_EQ(Recognize("MSF"), "none");
  EXPECT_EQ(Recognize("msft and more"), "none");
}

}  // namespace
}  // namespace hearthmake::typelib
