#include "adapters/typelib/TypeList.hpp"

#include <gtest/gtest.h>

#include <string>

#include "automation/Error.hpp"
#include "support/TypeLibFakeFiles.hpp"

namespace hearthmake::typelib {
namespace {

platform::TypeDescription Named(const std::string& name, const std::string& helpString = {}) {
  platform::TypeDescription type;
  type.name = name;
  type.helpString = helpString;
  return type;
}

TEST(TypeList, KeepsTheOrder) {
  test::TypeLibFakeFiles files;
  files.Put("f", "");
  const auto file = files.Open("f");
  PagedFile pages(*file, "f");
  TypeList list{ByteView(pages)};
  list.Add(Named("b"));
  list.Add(Named("a"));
  const auto types = list.Take();
  ASSERT_EQ(types.size(), 2u);
  EXPECT_EQ(types[0].name, "b");
  EXPECT_EQ(types[1].name, "a");
}

TEST(TypeList, ShowsTypesAsWindowsDoes) {
  test::TypeLibFakeFiles files;
  files.Put("f", "");
  const auto file = files.Open("f");
  PagedFile pages(*file, "f");
  TypeList list{ByteView(pages)};
  platform::TypeDescription type;
  type.guid = "{00000000-0000-0000-0000-000000000000}";
  type.flags = 0x1140;
  type.kind = platform::TypeKind::Interface;
  list.Add(type);
  type.guid = "{00020400-0000-0000-C000-000000000046}";
  type.kind = platform::TypeKind::Dispatch;
  list.Add(type);
  const auto types = list.Take();
  EXPECT_EQ(types.at(0).guid, "");
  EXPECT_EQ(types.at(0).flags, 0x1140);
  EXPECT_EQ(types.at(1).guid, "{00020400-0000-0000-C000-000000000046}");
  EXPECT_EQ(types.at(1).flags, 0x1040);
}

TEST(TypeList, RefusesMoreTextThanALibraryCanHave) {
  test::TypeLibFakeFiles files;
  files.Put("f", "");
  const auto file = files.Open("f");
  PagedFile pages(*file, "C:\\f.tlb");
  TypeList list{ByteView(pages)};
  const std::string help(0xFFFF, 'h');
  const std::size_t fitting = TypeList::kMostText / help.size();
  for (std::size_t i = 0; i < fitting; ++i) list.Add(Named("", help));
  try {
    list.Add(Named("", help));
    FAIL();
  } catch (const automation::Error& error) {
    EXPECT_EQ(error.Number(), 45);
    EXPECT_EQ(error.Source(), "TypeLibReader");
    EXPECT_EQ(error.Description(), "C:\\f.tlb is damaged: the texts of its types pass 64 MB");
  }
}

}  // namespace
}  // namespace hearthmake::typelib
