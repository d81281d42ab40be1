#include "vbscript/objects/Dictionary.hpp"

#include <gtest/gtest.h>

#include <functional>

#include "support/ErrorExpect.hpp"
#include "support/ScriptObjectBench.hpp"
#include "vbscript/Errors.hpp"
#include "vbscript/objects/StandardObjects.hpp"

namespace hearthmake::vbscript {
namespace {

using automation::InvokeKind;
using automation::Make;
using automation::Object;
using automation::Ref;
using automation::Variant;

std::u16string Joined(const Variant& array) {
  std::u16string text;
  for (const Variant& element : array.AsArray()->Elements()) text += Units(element) + u",";
  return text;
}

// Runs code at its end, as an object of a script class does.
class LastWord final : public Object {
 public:
  explicit LastWord(std::function<void()> action) : m_action(std::move(action)) {}
  ~LastWord() override { m_action(); }
  const automation::Interface& Declaration() const override { return Dictionary::Describe(); }

 private:
  std::function<void()> m_action;
};

Variant Ending(std::function<void()> action) {
  return Variant::FromObject(Ref<Object>(Make<LastWord>(std::move(action))));
}

TEST(Dictionary, OffersItsMembersByName) {
  ScriptObjectBench bench;
  const Ref<Object> d = CreateDictionary(bench.context);
  d->Call("Add", {Text(u"a"), Text(u"1")});
  d->Let("Item", {Text(u"b"), Text(u"2")});
  d->Set("Item", {Text(u"c"), Text(u"3")});
  EXPECT_EQ(d->Get("Count").AsLong(), 3);
  EXPECT_TRUE(d->Call("Exists", {Text(u"b")}).AsBoolean());
  EXPECT_FALSE(d->Call("Exists", {Text(u"B")}).AsBoolean());
  EXPECT_EQ(Units(d->Get("Item", {Text(u"a")})), u"1");
  d->Let("Key", {Text(u"b"), Text(u"z")});
  EXPECT_EQ(Joined(d->Call("Keys")), u"a,z,c,");
  EXPECT_EQ(Joined(d->Call("Items")), u"1,2,3,");
  d->Call("Remove", {Text(u"a")});
  EXPECT_EQ(Joined(d->Call("Keys")), u"z,c,");
  d->Call("RemoveAll");
  EXPECT_EQ(d->Get("Count").AsLong(), 0);
  d->Let("CompareMode", {Number(1)});
  EXPECT_EQ(d->Get("CompareMode").AsLong(), 1);
  EXPECT_TRUE(d->Get("HashVal", {Text(u"a")}).Type() == automation::VariantType::Long);
  EXPECT_EQ(d->Declaration().Name(), "Dictionary");
}

TEST(Dictionary, KeepsTheIdsThatMachinesRelyOn) {
  const auto d = Make<Dictionary>();
  EXPECT_EQ(d->FindMember("item"), Dictionary::kItemMember);
  EXPECT_EQ(d->FindMember("EXISTS"), Dictionary::kExistsMember);
  EXPECT_EQ(d->FindMember("count"), Dictionary::kCountMember);
  EXPECT_EQ(d->FindMember("newenum"), automation::kNewEnumMember);
  EXPECT_EQ(Dictionary::kItemMember, automation::kDefaultMember);
}

TEST(Dictionary, AnswersAWrongNumberOfArguments) {
  const auto d = Make<Dictionary>();
  EXPECT_EQ(ErrorOf([&] { d->Get("Item"); }), number::kArgumentNotOptional);
  EXPECT_EQ(ErrorOf([&] { d->Get("Item", {Number(1), Number(2)}); }), number::kWrongNumberOfArguments);
  EXPECT_EQ(ErrorOf([&] { d->Call("Add", {Number(1)}); }), number::kArgumentNotOptional);
  EXPECT_EQ(ErrorOf([&] { d->Let("Count", {Number(1)}); }), number::kMemberNotFound);
  EXPECT_EQ(ErrorOf([&] { d->Get("Key", {Number(1)}); }), number::kMemberNotFound);
}

TEST(Dictionary, AddsAKeyOnce) {
  const auto d = Make<Dictionary>();
  d->Add(Number(1), Text(u"x"));
  support::ExpectError([&] { d->Add(Variant::FromDouble(1), Text(u"y")); }, 457, kRuntimeErrorSource,
                       "This key is already associated with an element of this collection");
  EXPECT_EQ(Units(d->Item(Number(1))), u"x");
}

TEST(Dictionary, AddsAKeyThatIsRead) {
  const auto d = Make<Dictionary>();
  EXPECT_TRUE(d->Get("Item", {Text(u"new")}).IsEmpty());
  EXPECT_TRUE(d->Exists(Text(u"new")));
}

TEST(Dictionary, FollowsReferences) {
  const auto d = Make<Dictionary>();
  Variant key = Text(u"k");
  Variant item = Number(5);
  d->Add(Variant::ByReference(&key), Variant::ByReference(&item));
  item = Number(6);
  EXPECT_EQ(d->Item(Text(u"k")).AsLong(), 5);
  d->SetItem(Variant::ByReference(&key), Variant::ByReference(&item));
  EXPECT_EQ(d->Item(Variant::ByReference(&key)).AsLong(), 6);
  EXPECT_TRUE(d->Exists(Variant::ByReference(&key)));
  d->Remove(Variant::ByReference(&key));
  EXPECT_EQ(d->Count(), 0);
}

TEST(Dictionary, RenamesKeys) {
  const auto d = Make<Dictionary>();
  d->Add(Text(u"a"), Number(1));
  d->Add(Text(u"b"), Number(2));
  support::ExpectError([&] { d->SetKey(Text(u"x"), Text(u"y")); }, 32811, kRuntimeErrorSource,
                       "Element not found");
  EXPECT_EQ(ErrorOf([&] { d->SetKey(Text(u"a"), Text(u"b")); }), number::kKeyAlreadyExists);
  d->SetKey(Text(u"a"), Number(7));
  EXPECT_EQ(d->Item(Number(7)).AsLong(), 1);
  EXPECT_FALSE(d->Exists(Text(u"a")));
}

TEST(Dictionary, RefusesToRemoveWhatIsNotThere) {
  const auto d = Make<Dictionary>();
  EXPECT_EQ(ErrorOf([&] { d->Remove(Text(u"x")); }), 32811);
}

TEST(Dictionary, RefusesArraysAsKeys) {
  const auto d = Make<Dictionary>();
  const Variant array = d->Keys();
  for (const auto& action : std::initializer_list<std::function<void()>>{
           [&] { d->Add(array, {}); }, [&] { d->Exists(array); }, [&] { d->Item(array); },
           [&] { d->SetItem(array, {}); }, [&] { d->Remove(array); }, [&] { d->HashVal(array); }})
    EXPECT_EQ(ErrorOf(action), number::kInvalidProcedureCall);
  EXPECT_EQ(d->Count(), 0);
}

TEST(Dictionary, GivesEmptyArraysWhenItIsEmpty) {
  const auto d = Make<Dictionary>();
  for (const Variant& array : {d->Keys(), d->Items()}) {
    EXPECT_TRUE(array.AsArray()->Elements().empty());
    EXPECT_EQ(array.AsArray()->Bounds()[0].lower, 0);
  }
}

TEST(Dictionary, ComparesTextsAsItIsTold) {
  const auto d = Make<Dictionary>();
  d->SetCompareMode(1);
  d->Add(Text(u"Key"), {});
  EXPECT_TRUE(d->Exists(Text(u"kEY")));
  EXPECT_EQ(d->HashVal(Text(u"Key")), d->HashVal(Text(u"kEY")));
  EXPECT_EQ(ErrorOf([&] { d->SetCompareMode(0); }), number::kInvalidProcedureCall);
  d->RemoveAll();
  EXPECT_EQ(ErrorOf([&] { d->SetCompareMode(-1); }), number::kInvalidProcedureCall);
  d->SetCompareMode(0);
  d->Add(Text(u"Key"), {});
  EXPECT_FALSE(d->Exists(Text(u"kEY")));
}

TEST(Dictionary, HashesTheSameKeysAlike) {
  const auto d = Make<Dictionary>();
  EXPECT_EQ(d->HashVal(Number(5)), d->HashVal(Variant::FromDouble(5)));
  for (int i = 0; i < 100; ++i) {
    EXPECT_GE(d->HashVal(Number(i)), 0);
    EXPECT_LT(d->HashVal(Number(i)), 1201);
  }
}

TEST(Dictionary, HoldsOutWhenTheEndOfAnItemChangesIt) {
  auto d = Make<Dictionary>();
  Dictionary* raw = d.Get();
  const auto meddle = [raw] {
    for (int i = 0; i < 100; ++i) raw->Item(Number(i)) = Number(i);
    raw->RemoveAll();
    raw->Add(Text(u"last"), {});
  };
  d->Add(Text(u"x"), Ending(meddle));
  d->SetItem(Text(u"x"), Number(1));
  EXPECT_EQ(Joined(d->Keys()), u"last,");
  d->Add(Text(u"x"), Ending(meddle));
  d->Remove(Text(u"x"));
  EXPECT_EQ(Joined(d->Keys()), u"last,");
  d->Add(Ending(meddle), {});
  d->RemoveAll();
  EXPECT_EQ(Joined(d->Keys()), u"last,");
}

TEST(Dictionary, MayHoldAMillionOthersInOneAnother) {
  auto outer = Make<Dictionary>();
  for (int i = 0; i < 1'000'000; ++i) {
    auto next = Make<Dictionary>();
    next->Add(Number(0), Variant::FromObject(Ref<Object>(outer.Get())));
    outer = std::move(next);
  }
  outer = nullptr;  // without an overflow of the stack
}

}  // namespace
}  // namespace hearthmake::vbscript
