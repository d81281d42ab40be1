#include "adapters/git/RefName.hpp"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "adapters/git/LibGit2.hpp"

namespace hearthmake::git {
namespace {

bool IsValid(const std::string& name) {
  int isValid = 0;
  return git_reference_name_is_valid(&isValid, name.c_str()) == 0 && isValid != 0;
}

TEST(RefName, GitTakesTheNameOfAnyPathAndLabel) {
  std::set<std::string> names;
  std::set<std::string> texts;
  for (int byte = 1; byte < 256; ++byte) {
    for (const std::string& text :
         {std::string(1, static_cast<char>(byte)), "a" + std::string(2, static_cast<char>(byte)) + "b"})
      texts.insert(text);
  }
  texts.insert(
      {"a.lock", "@", "..", "x@{y}", std::string(300, 'n'), std::string(301, 'n'), "a%", "a%20", "é"});
  for (const std::string& text : texts) {
    const ItemPath path = ItemPath().Child("folder").Child(text);
    EXPECT_TRUE(IsValid(CheckoutRef(path))) << CheckoutRef(path);
    EXPECT_TRUE(names.insert(CheckoutRef(path)).second) << CheckoutRef(path);
    for (int attempt = 0; attempt < 4; ++attempt) {
      const std::string tag = kTagRefs + TagName(text, path, attempt);
      EXPECT_TRUE(IsValid(tag)) << tag;
      EXPECT_NE(TagName(text, path, attempt), TagName(text, path, attempt + 1));
      EXPECT_FALSE(TagName(text, path, attempt).starts_with('-'));
    }
  }
}

TEST(RefName, NoCheckOutIsAFolderOfAnother) {
  EXPECT_EQ(CheckoutRef(ItemPath::Parse("$/A/b.cls")), "refs/checkouts/A/b.cls%");
  EXPECT_FALSE(
      CheckoutRef(ItemPath::Parse("$/A/b/c")).starts_with(CheckoutRef(ItemPath::Parse("$/A/b")) + "/"));
}

TEST(RefName, TagsReadWell) {
  const ItemPath path = ItemPath::Parse("$/Suite/Lib");
  EXPECT_EQ(TagName("Build 12.5", path, 0), "Build-12.5");
  EXPECT_EQ(TagName("1.0", path, 1), "1.0@Suite-Lib");
  EXPECT_EQ(TagName("1.0", path, 2), "1.0@Suite-Lib%2");
  EXPECT_EQ(TagName("1.0", ItemPath(), 1), "1.0@root");
}

}  // namespace
}  // namespace hearthmake::git
