#include "vbscript/objects/DictionaryTable.hpp"

#include <gtest/gtest.h>

#include <map>
#include <random>

#include "support/ScriptObjectBench.hpp"

namespace hearthmake::vbscript {
namespace {

using automation::Variant;

std::vector<std::int32_t> KeysOf(const DictionaryTable& table) {
  std::vector<std::int32_t> keys;
  for (std::size_t place = table.Next(0); place != DictionaryTable::kNoPlace; place = table.Next(place + 1))
    keys.push_back(table.Key(place).AsLong());
  return keys;
}

TEST(DictionaryTable, FindsWhatWasInserted) {
  DictionaryTable table;
  EXPECT_EQ(table.Find(Number(1)), DictionaryTable::kNoPlace);
  EXPECT_TRUE(table.Insert(Number(1), Text(u"one")));
  EXPECT_FALSE(table.Insert(Number(1), Text(u"other")));
  EXPECT_EQ(Units(table.Item(table.Find(Number(1)))), u"one");
  EXPECT_TRUE(table.Item(table.FindOrInsert(Number(2))).IsEmpty());
  EXPECT_EQ(table.Count(), 2u);
}

TEST(DictionaryTable, KeepsTheOrderWhenKeysGo) {
  DictionaryTable table;
  for (int i = 0; i < 100; ++i) table.Insert(Number(i), {});
  for (int i = 0; i < 100; ++i)
    if (i % 7 != 3) table.Remove(table.Find(Number(i)));
  table.Insert(Number(0), {});
  EXPECT_EQ(KeysOf(table),
            (std::vector<std::int32_t>{3, 10, 17, 24, 31, 38, 45, 52, 59, 66, 73, 80, 87, 94, 0}));
}

TEST(DictionaryTable, RenamesInPlace) {
  DictionaryTable table;
  for (int i = 0; i < 3; ++i) table.Insert(Number(i), Number(10 * i));
  for (int i = 0; i < 1000; ++i) table.Rename(table.Find(Number(i == 0 ? 1 : 99 + i)), Number(100 + i));
  EXPECT_EQ(KeysOf(table), (std::vector<std::int32_t>{0, 1099, 2}));
  EXPECT_EQ(table.Item(table.Find(Number(1099))).AsLong(), 10);
  EXPECT_EQ(table.Find(Number(1)), DictionaryTable::kNoPlace);
}

TEST(DictionaryTable, DoesNotGrowWhenUsedAsAQueueOrAStack) {
  DictionaryTable table;
  for (int i = 0; i < 100'000; ++i) {
    table.Insert(Number(i), {});
    if (i >= 10) table.Remove(table.Find(Number(i - 10)));
    ASSERT_LE(table.Next(0), 64u);
  }
  EXPECT_EQ(table.Count(), 10u);
  table.Clear();
  EXPECT_EQ(table.Count(), 0u);
  EXPECT_EQ(table.Next(0), DictionaryTable::kNoPlace);
  EXPECT_TRUE(table.Insert(Number(1), {}));
}

TEST(DictionaryTable, MayInsertItsOwnEntries) {
  DictionaryTable table;
  table.Insert(Text(u"a"), Text(u"b"));
  for (int i = 0; i < 100; ++i) {
    const Variant& item = table.Item(table.Find(Text(u"a")));
    table.Insert(Number(i), item);
  }
  EXPECT_EQ(Units(table.Item(table.Find(Number(99)))), u"b");
}

TEST(DictionaryTable, CopiesAnArrayThatSomebodyPointsInto) {
  const automation::Ref<automation::ArrayBuffer> array(new automation::ArrayBuffer({{0, 1}}));
  array->Lock();
  DictionaryTable table;
  table.Insert(Number(1), Variant::FromArray(array));
  array->Elements()[0] = Number(5);
  EXPECT_TRUE(table.Item(0).AsArray()->Elements()[0].IsEmpty());
  array->Unlock();
}

// Against an ordered list of the library's own.
TEST(DictionaryTable, AgreesWithASimplerOne) {
  std::mt19937 random(7);
  DictionaryTable table;
  std::map<std::int32_t, std::pair<std::uint64_t, std::int32_t>> model;  // key: age, item
  std::uint64_t age = 0;
  for (int step = 0; step < 200'000; ++step) {
    const auto key = static_cast<std::int32_t>(random() % 500);
    const std::size_t place = table.Find(Number(key));
    ASSERT_EQ(place != DictionaryTable::kNoPlace, model.contains(key));
    switch (random() % 4) {
      case 0:
        if (place != DictionaryTable::kNoPlace) table.Remove(place);
        model.erase(key);
        break;
      case 1: {
        const auto other = static_cast<std::int32_t>(random() % 500);
        if (place == DictionaryTable::kNoPlace || model.contains(other)) break;
        table.Rename(place, Number(other));
        model[other] = model[key];
        model.erase(key);
        break;
      }
      default:
        table.Item(table.FindOrInsert(Number(key))) = Number(step);
        model.try_emplace(key, age++, 0).first->second.second = step;
    }
    ASSERT_EQ(table.Count(), model.size());
  }
  std::map<std::uint64_t, std::int32_t> byAge;
  for (const auto& [key, value] : model) {
    byAge[value.first] = key;
    EXPECT_EQ(table.Item(table.Find(Number(key))).AsLong(), value.second);
  }
  std::vector<std::int32_t> keys;
  for (const auto& [when, key] : byAge) keys.push_back(key);
  EXPECT_EQ(KeysOf(table), keys);
}

}  // namespace
}  // namespace hearthmake::vbscript
