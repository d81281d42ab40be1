#include "adapters/typelib/PeImage.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>

#include "automation/Error.hpp"
#include "support/TypeLibBytes.hpp"
#include "support/TypeLibFakeFiles.hpp"
#include "support/TypeLibPeBuilder.hpp"

namespace hearthmake::typelib {
namespace {

using test::TypeLibPeBuilder;
using ::testing::HasSubstr;

constexpr char kPath[] = "C:\\bin\\image.dll";

// The resource's bytes.
std::string Find(const std::string& image, std::optional<std::uint32_t> number = std::nullopt) {
  test::TypeLibFakeFiles files;
  files.Put(kPath, image);
  const auto file = files.Open(kPath);
  PagedFile pages(*file, kPath);
  const ByteView library = PeImage(ByteView(pages)).TypeLibrary(number);
  return library.Bytes(0, static_cast<std::uint16_t>(library.Size()), "the fixture");
}

// The text of the error that looking for the resource raises; empty when there is none.
std::string Failure(const std::string& image, std::optional<std::uint32_t> number = std::nullopt) {
  try {
    Find(image, number);
  } catch (const automation::Error& error) {
    EXPECT_EQ(error.Number(), 45);
    EXPECT_EQ(error.Source(), "TypeLibReader");
    EXPECT_THAT(error.Description(), HasSubstr(kPath));
    return error.Description();
  }
  return {};
}

TEST(PeImage, RecognizesTheMark) {
  test::TypeLibFakeFiles files;
  files.Put("a", "MZ");
  files.Put("b", "M");
  files.Put("c", "MSFT");
  for (const auto& [name, expected] : {std::pair("a", true), std::pair("b", false), std::pair("c", false)}) {
    const auto file = files.Open(name);
    PagedFile pages(*file, name);
    EXPECT_EQ(PeImage::Recognize(ByteView(pages)), expected) << name;
  }
}

TEST(PeImage, FindsTheLibraryIn32BitImages) {
  EXPECT_EQ(Find(TypeLibPeBuilder(false).AddTypeLib(1, "library").Build()), "library");
}

TEST(PeImage, FindsTheLibraryIn64BitImages) {
  EXPECT_EQ(Find(TypeLibPeBuilder(true).AddTypeLib(1, "library").Build()), "library");
}

TEST(PeImage, MatchesTheTypeNameWithoutRegardToCase) {
  EXPECT_EQ(Find(TypeLibPeBuilder().Add({0, "TypeLib"}, {1, {}}, "library").Build()), "library");
}

TEST(PeImage, PassesOtherTypes) {
  TypeLibPeBuilder builder;
  builder.Add({0, "REGISTRY"}, {1, {}}, "script")
      .Add({0, "TYPELIC"}, {1, {}}, "no")
      .Add({16, {}}, {1, {}}, "v");
  EXPECT_EQ(Find(builder.AddTypeLib(1, "library").Build()), "library");
}

TEST(PeImage, TakesTheNumberThatIsAskedFor) {
  TypeLibPeBuilder builder;
  builder.AddTypeLib(1, "one").AddTypeLib(2, "two").AddTypeLib(3, "three");
  EXPECT_EQ(Find(builder.Build(), 3), "three");
  EXPECT_EQ(Find(builder.Build(), 1), "one");
  EXPECT_THAT(Failure(builder.Build(), 4), HasSubstr("holds no type library with the resource number 4"));
}

TEST(PeImage, PrefersNumberOneWhenNoneIsAskedFor) {
  TypeLibPeBuilder builder;
  builder.Add({0, "TYPELIB"}, {0, "MAIN"}, "named").AddTypeLib(3, "three").AddTypeLib(1, "one");
  EXPECT_EQ(Find(builder.Build()), "one");
}

TEST(PeImage, TakesTheFirstWhenThereIsNoNumberOne) {
  EXPECT_EQ(Find(TypeLibPeBuilder().AddTypeLib(101, "first").AddTypeLib(102, "second").Build()), "first");
  EXPECT_EQ(Find(TypeLibPeBuilder().Add({0, "TYPELIB"}, {0, "MAIN"}, "named").Build()), "named");
}

TEST(PeImage, TakesAnyLanguage) {
  const std::string image =
      TypeLibPeBuilder().Add({0, "TYPELIB"}, {1, {}}, "library", {0x407, 0x40C}).Build();
  EXPECT_EQ(Find(image), "library");
}

TEST(PeImage, SaysThatThereIsNoLibrary) {
  EXPECT_EQ(Failure(TypeLibPeBuilder().Build()), std::string(kPath) + " holds no type library");
  EXPECT_EQ(Failure(TypeLibPeBuilder().Add({16, {}}, {1, {}}, "version").Build()),
            std::string(kPath) + " holds no type library");
}

TEST(PeImage, TakesAnImageWithFewDataDirectoriesAsOneWithoutResources) {
  const TypeLibPeBuilder builder = TypeLibPeBuilder().AddTypeLib(1, "library");
  const std::string image = test::WithU32(builder.Build(), builder.DataDirectory() - 4, 2);
  EXPECT_EQ(Failure(image), std::string(kPath) + " holds no type library");
}

TEST(PeImage, RefusesImagesOfOtherKinds) {
  const std::string image = TypeLibPeBuilder().AddTypeLib(1, "library").Build();
  const auto withSignature = [&](const std::string& signature) {
    return std::string(image).replace(TypeLibPeBuilder::kPeHeader, signature.size(), signature);
  };
  EXPECT_THAT(Failure(withSignature("NE")), HasSubstr("is a 16-bit image"));
  EXPECT_THAT(Failure(withSignature("LE")), HasSubstr("driver or OS/2"));
  EXPECT_THAT(Failure(withSignature("LX")), HasSubstr("driver or OS/2"));
  EXPECT_THAT(Failure(withSignature("??")), HasSubstr("DOS program"));
  EXPECT_THAT(Failure(test::WithU16(image, TypeLibPeBuilder::kOptionalHeader, 0x107)),
              HasSubstr("neither of PE32 nor of PE32+"));
}

TEST(PeImage, SaysWhereACutOffImageEnds) {
  const TypeLibPeBuilder builder = TypeLibPeBuilder().AddTypeLib(1, "library");
  const std::string image = builder.Build();
  EXPECT_EQ(Failure(image.substr(0, 0x60)),
            std::string(kPath) + " is cut off: the PE header at 0x80 lies outside the file");
  EXPECT_EQ(Failure(image.substr(0, builder.ResourceOffset())),
            std::string(kPath) + " is cut off: the resource directory at 0x140C lies outside the file");
}

TEST(PeImage, SurvivesBeingCutOffAtEveryByte) {
  for (const bool is64Bit : {false, true}) {
    const std::string image = TypeLibPeBuilder(is64Bit).AddTypeLib(1, "library").CodeSize(0).Build();
    const std::size_t end = image.find("library") + 7;
    for (std::size_t size = 0; size < image.size(); ++size) {
      EXPECT_EQ(Failure(image.substr(0, size)).empty(), size >= end) << size;
    }
  }
}

TEST(PeImage, SurvivesLyingFields) {
  for (const bool is64Bit : {false, true}) {
    const std::string image = TypeLibPeBuilder(is64Bit).AddTypeLib(1, "library").CodeSize(0).Build();
    for (std::size_t offset = 0; offset + 4 <= image.size(); ++offset) {
      for (const std::uint32_t lie : {0u, 0xFFFFFFFFu, 0x7FFFFFFFu, 0x80000000u, 0x10000u, 0xFFFFu}) {
        Failure(test::WithU32(image, offset, lie));
      }
    }
  }
}

TEST(PeImage, WalksADirectoryThatLeadsBackToItselfOnce) {
  const TypeLibPeBuilder builder = TypeLibPeBuilder().AddTypeLib(1, "library");
  // The only type's entry leads back to the root, whose only entry has a name and no number.
  const std::string image = test::WithU32(builder.Build(), builder.ResourceOffset() + 20, 0x80000000);
  EXPECT_THAT(Failure(image, 1), HasSubstr("holds no type library"));
  EXPECT_THAT(Failure(image), HasSubstr("directory in place of data"));
}

TEST(PeImage, GivesUpOnADirectoryThatClaimsMoreEntriesThanTheFileHasBytes) {
  const TypeLibPeBuilder builder = TypeLibPeBuilder().Add({0, "OTHER"}, {1, {}}, "other");
  const std::string image = test::WithU32(builder.Build(), builder.ResourceOffset() + 12, 0xFFFFFFFF);
  EXPECT_THAT(Failure(image), HasSubstr("lies outside the file"));
}

TEST(PeImage, PassesAHugeDirectoryInFewReads) {
  // As many entries as there can be, none of them a type library.
  const TypeLibPeBuilder builder = TypeLibPeBuilder().Add({0, "OTHER"}, {1, {}}, "other");
  auto pieces = builder.BuildPieces();
  pieces[builder.ResourceOffset()] = std::string(12, '\0') + "\xFF\xFF\xFF\xFF";
  test::TypeLibFakeFiles files;
  files.PutSparse(kPath, 16 << 20, pieces);
  const auto file = files.Open(kPath);
  PagedFile pages(*file, kPath);
  EXPECT_THROW(PeImage(ByteView(pages)).TypeLibrary(std::nullopt), automation::Error);
  EXPECT_LT(files.counts.reads, 200);
}

TEST(PeImage, SaysThatDataAndDirectoriesAreMixedUp) {
  const TypeLibPeBuilder builder = TypeLibPeBuilder().AddTypeLib(1, "library");
  const std::string image = test::WithU32(builder.Build(), builder.ResourceOffset() + 20, 0x18);
  EXPECT_THAT(Failure(image), HasSubstr("data in place of a directory"));
}

TEST(PeImage, SaysThatAnAddressIsInNoSection) {
  const TypeLibPeBuilder builder = TypeLibPeBuilder().AddTypeLib(1, "library");
  const std::string image = test::WithU32(builder.Build(), builder.DataDirectory() + 16, 0x7F000000);
  EXPECT_THAT(Failure(image), HasSubstr("the resource directory lies in no section"));
}

}  // namespace
}  // namespace hearthmake::typelib
