#include "adapters/posix/KeyTree.hpp"

#include <gtest/gtest.h>

namespace hearthmake::posix {
namespace {

using Tree = KeyTree<int>;

TEST(KeyTree, FindsKeysWithoutRegardToCase) {
  Tree tree;
  tree.Make("Software\\Größe").content = 7;
  ASSERT_NE(tree.Find("SOFTWARE\\GRÖßE"), nullptr);
  EXPECT_EQ(tree.Find("SOFTWARE\\GRÖßE")->content, 7);
  EXPECT_EQ(&tree.Make("software\\größe"), tree.Find("Software\\Größe"));
  EXPECT_EQ(Tree::Children(*tree.Find("Software")).front()->name, "Größe");
  EXPECT_EQ(tree.Find("Software\\x"), nullptr);
}

TEST(KeyTree, MakesAndFindsKeysBelowAnother) {
  Tree tree;
  Tree::Key& classes = tree.Make("Machine\\Classes");
  const Tree::Key& made = tree.MakeBelow(classes, "A.B\\Größe");
  EXPECT_EQ(tree.Find("machine\\classes\\a.b\\größe"), &made);
  EXPECT_EQ(tree.Below(classes, "a.b\\GRÖßE"), tree.Find("Machine\\Classes\\A.B\\Größe"));
  EXPECT_EQ(tree.Below(classes, "A.B\\X"), nullptr);
  EXPECT_EQ(tree.Below(classes, ""), &classes);
}

TEST(KeyTree, SkipsEmptyNames) {
  Tree tree;
  tree.Make("\\a\\\\b\\");
  EXPECT_NE(tree.Find("a\\b"), nullptr);
  EXPECT_EQ(tree.Find(""), &tree.Root());
  EXPECT_EQ(tree.Find("\\"), &tree.Root());
}

TEST(KeyTree, RemovesAKeyWithAllBelowIt) {
  Tree tree;
  tree.Make("a\\b\\c");
  EXPECT_FALSE(tree.Remove("a\\x"));
  EXPECT_FALSE(tree.Remove("a\\x\\y"));
  EXPECT_FALSE(tree.Remove(""));
  EXPECT_TRUE(tree.Remove("A\\B\\"));
  EXPECT_EQ(tree.Find("a\\b"), nullptr);
  EXPECT_NE(tree.Find("a"), nullptr);
}

TEST(KeyTree, RefusesKeysThatLieTooDeep) {
  Tree tree;
  std::string path;
  for (std::size_t i = 0; i < Tree::kDeepest; ++i) path += "k\\";
  EXPECT_NO_THROW(tree.Make(path));
  EXPECT_THROW(tree.Make(path + "k"), automation::Error);
}

}  // namespace
}  // namespace hearthmake::posix
