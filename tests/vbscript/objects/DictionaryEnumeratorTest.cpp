#include "vbscript/objects/DictionaryEnumerator.hpp"

#include <gtest/gtest.h>

#include "support/ScriptObjectBench.hpp"

namespace hearthmake::vbscript {
namespace {

using automation::Make;
using automation::Ref;
using automation::Variant;

Ref<Dictionary> Numbers(std::int32_t count) {
  auto d = Make<Dictionary>();
  for (std::int32_t i = 0; i < count; ++i) d->Add(Number(i), {});
  return d;
}

TEST(DictionaryEnumerator, WalksTheKeysInOrder) {
  const auto keys = WalkOver(*Numbers(5));
  ASSERT_EQ(keys.size(), 5u);
  for (std::int32_t i = 0; i < 5; ++i) EXPECT_EQ(keys[static_cast<std::size_t>(i)].AsLong(), i);
  EXPECT_TRUE(WalkOver(*Numbers(0)).empty());
}

TEST(DictionaryEnumerator, GoesOnWhenItsKeyIsRemoved) {
  const auto d = Numbers(1000);
  const auto walk = d->Enumerate();
  Variant key;
  std::int32_t expected = 0;
  while (walk->Next(key)) {
    EXPECT_EQ(key.AsLong(), expected++);
    d->Remove(key);
  }
  EXPECT_EQ(expected, 1000);
  EXPECT_EQ(d->Count(), 0);
}

TEST(DictionaryEnumerator, PassesOverKeysThatWereRemovedAhead) {
  const auto d = Numbers(100);
  const auto walk = d->Enumerate();
  Variant key;
  std::vector<std::int32_t> seen;
  while (walk->Next(key)) {
    seen.push_back(key.AsLong());
    for (std::int32_t i = 0; i < 30; ++i)
      if (const Variant other = Number(key.AsLong() + 1 + i); d->Exists(other)) d->Remove(other);
  }
  EXPECT_EQ(seen, (std::vector<std::int32_t>{0, 31, 62, 93}));
}

TEST(DictionaryEnumerator, SeesKeysThatAreAdded) {
  const auto d = Numbers(3);
  const auto walk = d->Enumerate();
  Variant key;
  std::int32_t seen = 0;
  while (walk->Next(key)) {
    ++seen;
    if (d->Count() < 50) d->Add(Number(d->Count()), {});
  }
  EXPECT_EQ(seen, 50);
}

TEST(DictionaryEnumerator, EndsWhenEverythingIsRemoved) {
  const auto d = Numbers(10);
  const auto walk = d->Enumerate();
  Variant key;
  ASSERT_TRUE(walk->Next(key));
  d->RemoveAll();
  EXPECT_FALSE(walk->Next(key));
  d->Add(Number(77), {});
  ASSERT_TRUE(walk->Next(key));
  EXPECT_EQ(key.AsLong(), 77);
}

TEST(DictionaryEnumerator, KeepsItsDictionary) {
  auto d = Numbers(2);
  const auto walk = d->Enumerate();
  d = nullptr;
  Variant key;
  EXPECT_TRUE(walk->Next(key));
  EXPECT_TRUE(walk->Next(key));
  EXPECT_FALSE(walk->Next(key));
}

}  // namespace
}  // namespace hearthmake::vbscript
