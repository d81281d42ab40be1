#include "adapters/typelib/TypeLibFileReader.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "automation/Error.hpp"
#include "support/TypeLibBytes.hpp"
#include "support/TypeLibFakeFiles.hpp"
#include "support/TypeLibFixtures.hpp"
#include "support/TypeLibPeBuilder.hpp"
#include "support/TypeLibSltgWriter.hpp"

namespace hearthmake::typelib {
namespace {

using test::ReadTypeLibFixture;
using test::TypeLibPeBuilder;
using ::testing::HasSubstr;

std::string OldLibrary() {
  test::TypeLibSltgWriter writer;
  writer.name = "Old";
  writer.helpString = "An old library";
  writer.guid = {0x0D};
  writer.types = {{5, "Thing", "A thing", {1}, 2, 1, 0},
                  {3, "_Thing", "The members of a thing", {2}, 0x40, 1, 0}};
  return writer.Write();
}

class TypeLibFileReaderTest : public ::testing::Test {
 protected:
  std::string NameOf(std::string_view path) { return reader.Read(path).name; }

  automation::Error Failure(std::string_view path) {
    try {
      reader.Read(path);
    } catch (const automation::Error& error) {
      EXPECT_EQ(error.Source(), "TypeLibReader");
      return error;
    }
    ADD_FAILURE() << path << " was read";
    return {0, "", ""};
  }

  std::shared_ptr<test::TypeLibFakeFiles> files = std::make_shared<test::TypeLibFakeFiles>();
  TypeLibFileReader reader{files};
};

TEST_F(TypeLibFileReaderTest, ReadsLibrariesThatStandAlone) {
  files->Put("C:\\new.tlb", ReadTypeLibFixture("Shapes.tlb"));
  files->Put("C:\\old.olb", OldLibrary());
  EXPECT_EQ(NameOf("C:\\new.tlb"), "Shapes");
  EXPECT_EQ(NameOf("C:\\old.olb"), "Old");
  EXPECT_EQ(reader.ReadTypes("C:\\new.tlb").size(), 9u);
  EXPECT_EQ(reader.ReadTypes("C:\\old.olb").size(), 2u);
}

TEST_F(TypeLibFileReaderTest, ReadsBothFormatsOutOfBothKindsOfImages) {
  for (const bool is64Bit : {false, true}) {
    files->Put("C:\\a.dll",
               TypeLibPeBuilder(is64Bit).AddTypeLib(1, ReadTypeLibFixture("Shapes.tlb")).Build());
    files->Put("C:\\b.ocx", TypeLibPeBuilder(is64Bit).AddTypeLib(1, OldLibrary()).Build());
    EXPECT_EQ(NameOf("C:\\a.dll"), "Shapes");
    EXPECT_EQ(NameOf("C:\\b.ocx"), "Old");
    EXPECT_EQ(reader.ReadTypes("C:\\a.dll").back().name, "Circle");
    EXPECT_EQ(reader.ReadTypes("C:\\b.ocx").back().name, "_Thing");
  }
}

TEST_F(TypeLibFileReaderTest, TakesTheResourceThatThePathNames) {
  files->Put("C:\\a.dll", TypeLibPeBuilder()
                              .AddTypeLib(1, ReadTypeLibFixture("Shapes.tlb"))
                              .AddTypeLib(2, ReadTypeLibFixture("Bare.tlb"))
                              .AddTypeLib(3, OldLibrary())
                              .Build());
  EXPECT_EQ(NameOf("C:\\a.dll"), "Shapes");
  EXPECT_EQ(NameOf("C:\\a.dll\\1"), "Shapes");
  EXPECT_EQ(NameOf("C:\\a.dll\\2"), "Bare");
  EXPECT_EQ(NameOf("C:\\A.DLL\\3"), "Old");
  EXPECT_EQ(reader.ReadTypes("C:\\a.dll\\2").size(), 1u);
  EXPECT_EQ(Failure("C:\\a.dll\\4").Description(),
            "C:\\a.dll holds no type library with the resource number 4");
}

TEST_F(TypeLibFileReaderTest, TakesAFileNamedLikeANumberAsTheFile) {
  files->Put("C:\\libs", ReadTypeLibFixture("Bare.tlb"));
  files->Put("C:\\libs\\3", ReadTypeLibFixture("Shapes.tlb"));
  EXPECT_EQ(NameOf("C:\\libs\\3"), "Shapes");
}

TEST_F(TypeLibFileReaderTest, IgnoresAResourceNumberBehindALibraryThatStandsAlone) {
  files->Put("C:\\new.tlb", ReadTypeLibFixture("Shapes.tlb"));
  EXPECT_EQ(NameOf("C:\\new.tlb\\1"), "Shapes");
}

TEST_F(TypeLibFileReaderTest, SaysThatAFileIsMissingWithTheFileSystemsNumber) {
  for (const char* path : {"C:\\no.dll", "C:\\no.dll\\3", "no.dll", "C:\\no.dll\\", "C:\\no.dll\\3x", "",
                           "C:\\no.dll\\99999999999"}) {
    const automation::Error error = Failure(path);
    EXPECT_EQ(error.Number(), 53);
    EXPECT_EQ(error.Description(), std::string("File not found") + (*path == 0 ? "" : ": ") + path);
  }
}

TEST_F(TypeLibFileReaderTest, SaysWhatAFileIsThatIsNoTypeLibrary) {
  files->Put("C:\\a.txt", "Hello");
  files->Put("C:\\empty", "");
  EXPECT_EQ(Failure("C:\\a.txt").Description(),
            "C:\\a.txt is neither a type library nor an image that could hold one");
  EXPECT_EQ(Failure("C:\\a.txt").Number(), 45);
  EXPECT_EQ(Failure("C:\\empty").Description(), "C:\\empty is empty");
  files->Put("C:\\a.dll", TypeLibPeBuilder().AddTypeLib(1, "none of both").Build());
  EXPECT_THAT(Failure("C:\\a.dll").Description(), HasSubstr("is damaged: what its resources give"));
}

TEST_F(TypeLibFileReaderTest, LooksAtTheStampAloneWhenNothingChanged) {
  files->Put("C:\\a.dll", TypeLibPeBuilder().AddTypeLib(3, ReadTypeLibFixture("Shapes.tlb")).Build());
  for (const char* path : {"C:\\a.dll", "C:\\a.dll\\3"}) {
    reader.Read(path);
    files->counts = {};
    EXPECT_EQ(NameOf(path), "Shapes");
    EXPECT_EQ(files->counts.stamps, 1);
    EXPECT_EQ(files->counts.opens, 0);
  }
}

TEST_F(TypeLibFileReaderTest, ReadingTheTypesTellsOfTheLibraryToo) {
  files->Put("C:\\a.dll", TypeLibPeBuilder().AddTypeLib(3, ReadTypeLibFixture("Shapes.tlb")).Build());
  EXPECT_EQ(reader.ReadTypes("C:\\a.dll\\3").size(), 9u);
  files->counts = {};
  EXPECT_EQ(NameOf("C:\\a.dll\\3"), "Shapes");
  EXPECT_EQ(files->counts.opens, 0);
  files->Put("C:\\a.dll", TypeLibPeBuilder().AddTypeLib(3, ReadTypeLibFixture("Bare.tlb")).Build());
  EXPECT_EQ(NameOf("C:\\a.dll\\3"), "Bare");
}

TEST_F(TypeLibFileReaderTest, ReadsAgainWhenTheFileChanged) {
  files->Put("C:\\a.tlb", ReadTypeLibFixture("Shapes.tlb"));
  EXPECT_EQ(NameOf("C:\\a.tlb"), "Shapes");
  files->Put("C:\\a.tlb", ReadTypeLibFixture("Bare.tlb"));
  EXPECT_EQ(NameOf("c:\\A.tlb"), "Bare");
  files->Delete("C:\\a.tlb");
  EXPECT_EQ(Failure("C:\\a.tlb").Number(), 53);
}

TEST_F(TypeLibFileReaderTest, ReadsOfALargeImageOnlyWhatMatters) {
  const TypeLibPeBuilder builder =
      TypeLibPeBuilder().CodeSize(200u << 20).AddTypeLib(1, ReadTypeLibFixture("Shapes.tlb"));
  files->PutSparse("C:\\large.dll", 220u << 20, builder.BuildPieces());
  EXPECT_EQ(NameOf("C:\\large.dll"), "Shapes");
  EXPECT_LE(files->counts.reads, 4);
  EXPECT_LE(files->counts.bytes, std::uint64_t{4} * 4096);
}

TEST_F(TypeLibFileReaderTest, ReadsOfALargeLibraryOnlyWhatMatters) {
  // Forty megabytes between the library's header and its tables: the offsets of all segments are moved.
  std::string bytes = ReadTypeLibFixture("Bare.tlb");
  const std::uint32_t gap = 40u << 20;
  const std::size_t directory = 0x54 + 4;
  for (std::size_t entry = directory; entry < directory + std::size_t{15} * 16; entry += 16) {
    const std::uint32_t offset = test::U32At(bytes, entry);
    if (offset != 0xFFFFFFFF) bytes = test::WithU32(bytes, entry, offset + gap);
  }
  const std::size_t headers = directory + std::size_t{15} * 16;
  files->PutSparse("C:\\large.tlb", gap + bytes.size(),
                   {{0, bytes.substr(0, headers)}, {gap + headers, bytes.substr(headers)}});
  EXPECT_EQ(NameOf("C:\\large.tlb"), "Bare");
  EXPECT_EQ(reader.ReadTypes("C:\\large.tlb").size(), 1u);
  EXPECT_LE(files->counts.bytes, std::uint64_t{8} * 4096);
}

// Whatever the bytes are, both calls give a result or this reader's error.
void ExpectNoHarm(test::TypeLibFakeFiles& files, TypeLibFileReader& reader, std::string bytes) {
  files.Put("C:\\mutant", std::move(bytes));
  const std::vector<std::function<void()>> calls = {[&] { reader.Read("C:\\mutant"); },
                                                    [&] { reader.ReadTypes("C:\\mutant"); }};
  for (const auto& call : calls) {
    try {
      call();
    } catch (const automation::Error& error) {
      ASSERT_EQ(error.Number(), 45);
      ASSERT_EQ(error.Source(), "TypeLibReader");
      ASSERT_EQ(error.Description().rfind("C:\\mutant ", 0), 0u) << error.Description();
    }
  }
}

TEST_F(TypeLibFileReaderTest, SurvivesTwentyThousandMutations) {
  const std::vector<std::string> originals = {
      ReadTypeLibFixture("Shapes.tlb"),
      ReadTypeLibFixture("HelpDll.tlb"),
      OldLibrary(),
      TypeLibPeBuilder(false).CodeSize(0).AddTypeLib(1, ReadTypeLibFixture("Bare.tlb")).Build(),
      TypeLibPeBuilder(true).CodeSize(0).AddTypeLib(2, OldLibrary()).Build(),
  };
  std::mt19937 random(20060331);  // the same every time
  for (int i = 0; i < 20000; ++i) {
    std::string mutant = originals[random() % originals.size()];
    // The headers are a small part of the bytes and deserve more than their share.
    const std::size_t range = random() % 2 == 0 ? mutant.size() : std::min<std::size_t>(mutant.size(), 0x200);
    for (unsigned flips = 1 + random() % 8; flips > 0; --flips) {
      char& byte = mutant[random() % range];
      byte = static_cast<char>(byte ^ 1 << random() % 8);
    }
    if (random() % 16 == 0) mutant.resize(random() % (mutant.size() + 1));
    ExpectNoHarm(*files, reader, std::move(mutant));
    if (HasFatalFailure()) FAIL() << "mutation " << i;
  }
}

}  // namespace
}  // namespace hearthmake::typelib
