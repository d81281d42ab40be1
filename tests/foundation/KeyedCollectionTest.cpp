#include "foundation/KeyedCollection.hpp"

#include <gtest/gtest.h>

#include "automation/Interface.hpp"
#include "support/ErrorExpect.hpp"

namespace hearthmake {
namespace {

using automation::Make;
using automation::Ref;
using automation::Variant;
using support::ExpectError;

class Thing final : public automation::Object {
 public:
  Thing(std::string itsName, int& alive) : name(std::move(itsName)), m_alive(alive) { ++m_alive; }
  const automation::Interface& Declaration() const override {
    static const automation::Interface kInterface("Thing", "_Thing", "", "");
    return kInterface;
  }
  const std::string name;

 protected:
  ~Thing() override { --m_alive; }

 private:
  int& m_alive;
};

struct Fixture {
  int alive = 0;
  KeyedCollection<Thing> list{"Things.item"};

  Fixture(std::initializer_list<const char*> keys = {}) {  // NOLINT(google-explicit-constructor)
    for (const char* key : keys) list.Add(*Make<Thing>(key, alive), key);
  }
  std::string Order() const {
    std::string order;
    for (const auto& thing : list.Snapshot()) order += thing->name;
    return order;
  }
};

TEST(KeyedCollection, KeepsItsObjectsInOrder) {
  const Fixture f = {"c", "a", "b"};
  EXPECT_EQ(f.list.Count(), 3U);
  EXPECT_EQ(f.Order(), "cab");
  EXPECT_EQ(f.list.At(1).name, "a");
}

TEST(KeyedCollection, HoldsItsObjectsUntilTheyAreTakenOut) {
  Fixture f = {"a", "b"};
  EXPECT_EQ(f.alive, 2);
  f.list.RemoveKey("a");
  EXPECT_EQ(f.alive, 1);
  f.list.Clear();
  EXPECT_EQ(f.alive, 0);
}

TEST(KeyedCollection, AKeyIsTakenOnce) {
  Fixture f = {"a"};
  EXPECT_FALSE(f.list.Add(*Make<Thing>("x", f.alive), "A"));
  EXPECT_EQ(f.Order(), "a");
  EXPECT_EQ(f.alive, 1);
}

TEST(KeyedCollection, FindsKeysWithoutRegardToCase) {
  const Fixture f = {"Größe"};
  EXPECT_NE(f.list.Find("GRÖßE"), nullptr);
  EXPECT_EQ(f.list.Find("Grosse"), nullptr);
  EXPECT_EQ(f.list.Item(Variant::FromText("grÖße")).name, "Größe");
}

TEST(KeyedCollection, GivesItemsByPositionFromOne) {
  const Fixture f = {"a", "b"};
  EXPECT_EQ(f.list.Item(Variant::FromLong(2)).name, "b");
  EXPECT_EQ(f.list.Item(Variant::FromDouble(1.2)).name, "a");
  Variant position = Variant::FromInteger(2);
  EXPECT_EQ(f.list.Item(Variant::ByReference(&position)).name, "b");
}

TEST(KeyedCollection, ATextIsAlwaysAKey) {
  const Fixture f = {"7", "1"};
  EXPECT_EQ(f.list.Item(Variant::FromText("1")).name, "1");
}

TEST(KeyedCollection, AnUnknownPositionIsErrorNine) {
  const Fixture f = {"a"};
  for (const int position : {0, 2, -1, 2147483647}) {
    ExpectError([&] { f.list.Item(Variant::FromLong(position)); }, 9, "Things.item",
                "Subscript out of range");
  }
  ExpectError([&] { f.list.Item(Variant()); }, 9, "Things.item", "Subscript out of range");
}

TEST(KeyedCollection, AnUnknownKeyIsErrorFive) {
  const Fixture f = {"a"};
  ExpectError([&] { f.list.Item(Variant::FromText("b")); }, 5, "Things.item",
              "Invalid procedure call or argument");
  ExpectError([&] { f.list.Item(Variant::FromText("")); }, 5, "Things.item",
              "Invalid procedure call or argument");
}

TEST(KeyedCollection, WhatIsNeitherPositionNorKeyIsATypeMismatch) {
  const Fixture f = {"a"};
  EXPECT_EQ(support::ErrorOf([&] { f.list.Item(Variant::FromObject(nullptr)); }).Number(), 13);
}

TEST(KeyedCollection, RemovesByPositionAndKey) {
  Fixture f = {"a", "b", "c", "d"};
  f.list.Remove(Variant::FromLong(2));
  f.list.Remove(Variant::FromText("D"));
  EXPECT_EQ(f.Order(), "ac");
  EXPECT_EQ(f.list.Item(Variant::FromText("c")).name, "c");
  EXPECT_EQ(f.list.Item(Variant::FromLong(2)).name, "c");
  EXPECT_EQ(support::ErrorOf([&] { f.list.Remove(Variant::FromLong(3)); }).Number(), 9);
  EXPECT_FALSE(f.list.RemoveKey("b"));
}

TEST(KeyedCollection, AKeyIsFreeAgainAfterItsObjectWent) {
  Fixture f = {"a", "b"};
  f.list.RemoveKey("a");
  EXPECT_TRUE(f.list.Add(*Make<Thing>("a", f.alive), "a"));
  EXPECT_EQ(f.Order(), "ba");
}

TEST(KeyedCollection, OrdinalsGrowAlongTheList) {
  Fixture f = {"a", "b", "c"};
  f.list.RemoveKey("b");
  EXPECT_LT(f.list.OrdinalOf("a"), f.list.OrdinalOf("c"));
  EXPECT_GT(f.list.OrdinalOf("unknown"), f.list.OrdinalOf("c"));
}

TEST(KeyedCollection, TakesANewOrder) {
  Fixture f = {"a", "b", "c"};
  f.list.Reorder({2, 0, 1});
  EXPECT_EQ(f.Order(), "cab");
  EXPECT_EQ(f.list.Item(Variant::FromText("b")).name, "b");
  EXPECT_LT(f.list.OrdinalOf("c"), f.list.OrdinalOf("a"));
  f.list.Add(*Make<Thing>("d", f.alive), "d");
  f.list.RemoveKey("a");
  EXPECT_EQ(f.Order(), "cbd");
  EXPECT_EQ(f.list.Item(Variant::FromText("d")).name, "d");
}

TEST(KeyedCollection, ASnapshotOutlivesChanges) {
  Fixture f = {"a", "b"};
  const auto snapshot = f.list.Snapshot();
  f.list.Clear();
  EXPECT_EQ(f.alive, 2);
  EXPECT_EQ(snapshot[1]->name, "b");
}

TEST(KeyedCollection, AnEnumeratorWalksTheListAsItWas) {
  Fixture f = {"a", "b"};
  const auto walk = Make<CollectionEnumerator<Thing>>(f.list.Snapshot());
  f.list.Clear();
  Variant item;
  ASSERT_TRUE(walk->Next(item));
  EXPECT_EQ(dynamic_cast<Thing&>(*item.AsObject()).name, "a");
  ASSERT_TRUE(walk->Next(item));
  EXPECT_FALSE(walk->Next(item));
  EXPECT_FALSE(walk->Next(item));
}

TEST(KeyedCollection, LooksUpQuicklyAfterManyRemovals) {
  Fixture f;
  for (int i = 0; i < 2000; ++i) f.list.Add(*Make<Thing>("x", f.alive), std::to_string(i));
  for (int i = 0; i < 2000; i += 2) f.list.RemoveKey(std::to_string(i));
  for (int i = 1; i < 2000; i += 2) EXPECT_NE(f.list.Find(std::to_string(i)), nullptr);
  EXPECT_EQ(f.alive, 1000);
}

}  // namespace
}  // namespace hearthmake
