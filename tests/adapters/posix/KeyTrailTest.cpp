#include "adapters/posix/KeyTrail.hpp"

#include <gtest/gtest.h>

#include "adapters/posix/KeyTree.hpp"

namespace hearthmake::posix {
namespace {

using Tree = KeyTree<int>;

// Pairs of them share names, parts of names, spellings but not case, and nothing.
constexpr std::string_view kPaths[] = {"CLSID\\{8EE6CC28-F2A8}\\InprocServer32",
                                       "CLSID\\{8EE6CC28-F2A8}",
                                       "CLSID\\{8EE6CC28-F2A8}\\ProgID",
                                       "CLSID\\{8EE6CC28}",
                                       "clsid\\{8ee6cc28}\\x",
                                       "CLSID\\{8EE6CC28}\\X\\Y",
                                       "",
                                       "CLSID",
                                       "CLSID2",
                                       "Größe\\a",
                                       "GRÖßE\\A\\b",
                                       "\\CLSID\\\\{8EE6CC28}\\",
                                       "\\CLSID\\\\{8EE6CC28}\\ProgID\\"};

TEST(KeyTrail, LeadsToTheSameKeysAsWholeWalks) {
  for (const std::string_view first : kPaths) {
    for (const std::string_view second : kPaths) {
      Tree tree;
      Tree::Key& start = tree.Make("Software\\Classes");
      KeyTrail<Tree> trail(tree, start);
      Tree::Key& one = trail.Make(first);
      Tree::Key& two = trail.Make(second);
      EXPECT_EQ(&one, tree.Below(start, first)) << first;
      EXPECT_EQ(&two, tree.Below(start, second)) << first << ", " << second;
      EXPECT_EQ(trail.Find(first), &one) << first << ", " << second;
      EXPECT_EQ(trail.Find(second), &two) << first << ", " << second;
    }
  }
}

TEST(KeyTrail, GoesOnBehindAKeyThatIsNotThere) {
  Tree tree;
  Tree::Key& key = tree.Make("a\\b\\c");
  KeyTrail<Tree> trail(tree, tree.Root());
  EXPECT_EQ(trail.Find("a\\b\\c"), &key);
  EXPECT_EQ(trail.Find("a\\b\\x\\y"), nullptr);
  EXPECT_EQ(trail.Find("a\\b\\x"), nullptr);
  EXPECT_EQ(trail.Find("A\\b\\c"), &key);
  EXPECT_EQ(trail.Find("x"), nullptr);
  EXPECT_EQ(trail.Find("a\\b\\c"), &key);
}

TEST(KeyTrail, RefusesKeysThatLieTooDeep) {
  Tree tree;
  KeyTrail<Tree> trail(tree, tree.Root());
  std::string path;
  for (std::size_t i = 0; i < Tree::kDeepest; ++i) path += "k\\";
  EXPECT_NO_THROW(trail.Make(path));
  EXPECT_THROW(trail.Make(path + "k"), automation::Error);
  EXPECT_EQ(&trail.Make("k"), tree.Find("k"));
}

}  // namespace
}  // namespace hearthmake::posix
