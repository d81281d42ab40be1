#include "adapters/typelib/PagedFile.hpp"

#include <gtest/gtest.h>

#include <string>

#include "automation/Error.hpp"
#include "support/TypeLibFakeFiles.hpp"

namespace hearthmake::typelib {
namespace {

// Bytes that tell their place.
std::string Pattern(std::size_t size) {
  std::string bytes(size, '\0');
  for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<char>(i * 7 + i / 256);
  return bytes;
}

std::string Read(PagedFile& pages, std::uint64_t offset, std::size_t count) {
  std::string bytes(count, '\0');
  pages.Read(offset, bytes.data(), count);
  return bytes;
}

TEST(PagedFile, GivesTheBytesOfTheFile) {
  const std::string content = Pattern(50000);
  test::TypeLibFakeFiles files;
  files.Put("f", content);
  const auto file = files.Open("f");
  PagedFile pages(*file, "f");
  EXPECT_EQ(pages.Size(), 50000u);
  for (const std::size_t offset : {0u, 1u, 4090u, 4096u, 49990u, 20000u, 8190u, 3u}) {
    EXPECT_EQ(Read(pages, offset, 10), content.substr(offset, 10)) << offset;
  }
  EXPECT_EQ(Read(pages, 100, 30000), content.substr(100, 30000));
}

TEST(PagedFile, ReadsAPlaceOnce) {
  test::TypeLibFakeFiles files;
  files.Put("f", Pattern(50000));
  const auto file = files.Open("f");
  PagedFile pages(*file, "f");
  for (std::uint64_t offset = 0; offset < 4096; offset += 4) Read(pages, offset, 4);
  for (std::uint64_t offset = 8192; offset < 12288; offset += 4) Read(pages, offset, 4);
  Read(pages, 0, 4);
  EXPECT_EQ(files.counts.reads, 2);
  EXPECT_EQ(files.counts.bytes, 8192u);
}

TEST(PagedFile, SaysThatAFileBecameShorter) {
  test::TypeLibFakeFiles files;
  files.Put("f", Pattern(50000));
  const auto file = files.Open("f");
  PagedFile pages(*file, "C:\\f.dll");
  files.Shrink("f", 100);
  // Twice, because a page that failed to load must not be taken for a good one.
  for (int i = 0; i < 2; ++i) {
    try {
      Read(pages, 50, 4);
      FAIL();
    } catch (const automation::Error& error) {
      EXPECT_EQ(error.Number(), 45);
      EXPECT_EQ(error.Source(), "TypeLibReader");
      EXPECT_EQ(error.Description(), "C:\\f.dll became shorter while it was read");
    }
  }
}

}  // namespace
}  // namespace hearthmake::typelib
