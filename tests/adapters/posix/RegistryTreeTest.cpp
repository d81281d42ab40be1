#include "adapters/posix/RegistryTree.hpp"

#include <gtest/gtest.h>

#include <string>

namespace hearthmake::posix {
namespace {

using platform::RegistryType;

std::string Printed(const RegistryTree::Key& key) {
  std::string text;
  for (const RegistryTree::Value* value : RegistryTree::Values(key))
    ((((text += value->name) += '=') += value->data) += ';');
  return text;
}

TEST(RegistryTree, KeepsTheFirstSpellingAndTheLastContent) {
  RegistryTree tree;
  RegistryTree::Key& key = tree.AllKeys().Make("a");
  EXPECT_TRUE(tree.Set(key, "Name", RegistryType::String, "1"));
  EXPECT_FALSE(tree.Set(key, "NAME", RegistryType::String, "1"));
  EXPECT_TRUE(tree.Set(key, "NAME", RegistryType::Binary, "1"));
  EXPECT_TRUE(tree.Set(key, "name", RegistryType::String, "2"));
  EXPECT_TRUE(tree.Set(key, "", RegistryType::String, ""));
  EXPECT_EQ(Printed(key), "=;Name=2;");
  EXPECT_EQ(tree.Find(key, "nAME")->data, "2");
  EXPECT_EQ(tree.Find(key, "other"), nullptr);
}

TEST(RegistryTree, RemovesValues) {
  RegistryTree tree;
  RegistryTree::Key& key = tree.AllKeys().Make("a");
  for (const char* name : {"x", "y", "z"}) tree.Set(key, name, RegistryType::String, name);
  EXPECT_TRUE(tree.Remove(key, "Y"));
  EXPECT_FALSE(tree.Remove(key, "Y"));
  EXPECT_EQ(Printed(key), "x=x;z=z;");
  EXPECT_TRUE(tree.Set(key, "Y", RegistryType::String, "new"));
  EXPECT_EQ(Printed(key), "x=x;Y=new;z=z;");
}

TEST(RegistryTree, AKeyThatIsMadeAgainHasNoneOfItsOldValues) {
  RegistryTree tree;
  tree.Set(tree.AllKeys().Make("a\\b"), "v", RegistryType::String, "1");
  tree.AllKeys().Remove("a");
  EXPECT_EQ(tree.Find(tree.AllKeys().Make("a\\b"), "v"), nullptr);
}

TEST(RegistryTree, CountsKeysAndValues) {
  RegistryTree tree;
  EXPECT_EQ(tree.Count(), 1U);
  RegistryTree::Key& key = tree.AllKeys().Make("a\\b");
  tree.Set(key, "v", RegistryType::String, "1");
  tree.Set(key, "V", RegistryType::String, "2");
  EXPECT_EQ(tree.Count(), 4U);
  tree.AllKeys().Remove("a\\b");
  EXPECT_EQ(tree.Count(), 2U);
}

}  // namespace
}  // namespace hearthmake::posix
