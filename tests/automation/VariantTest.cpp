#include "automation/Variant.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "automation/Interface.hpp"
#include "automation/Object.hpp"
#include "support/ErrorExpect.hpp"

namespace hearthmake::automation {
namespace {

using support::ErrorOf;

constexpr std::int32_t kTypeMismatch = 13;
constexpr std::int32_t kOverflow = 6;
constexpr std::int32_t kInvalidUseOfNull = 94;

class Counted final : public Object {
 public:
  explicit Counted(int& alive) : m_alive(alive) { ++m_alive; }
  const Interface& Declaration() const override {
    static const Interface kInterface("Counted", "_Counted", "", "");
    return kInterface;
  }

 protected:
  ~Counted() override { --m_alive; }

 private:
  int& m_alive;
};

Ref<ArrayBuffer> MakeArray(std::int32_t count) { return Ref<ArrayBuffer>(new ArrayBuffer({{0, count}})); }

TEST(StringBuffer, AppendsInPlaceWithinItsCapacity) {
  const Ref<StringBuffer> buffer(StringBuffer::New(u"ab", 5));
  EXPECT_TRUE(buffer->Append(u"cde"));
  EXPECT_EQ(buffer->View(), u"abcde");
  EXPECT_FALSE(buffer->Append(u"f"));
  EXPECT_EQ(buffer->View(), u"abcde");
  EXPECT_EQ(buffer->Capacity(), 5U);
}

TEST(StringBuffer, AppendsItself) {
  const Ref<StringBuffer> buffer(StringBuffer::New(u"ab", 8));
  EXPECT_TRUE(buffer->Append(buffer->View()));
  EXPECT_EQ(buffer->View(), u"abab");
}

TEST(StringBuffer, KnowsWhetherItIsShared) {
  const Ref<StringBuffer> buffer(StringBuffer::New(u"a"));
  EXPECT_FALSE(buffer->IsShared());
  const Ref<StringBuffer> other = buffer;
  EXPECT_TRUE(buffer->IsShared());
}

TEST(StringBuffer, ATextTooLongIsOutOfMemory) {
  EXPECT_EQ(ErrorOf([] { StringBuffer::New(u"a", std::numeric_limits<std::size_t>::max() / 4); }).Number(),
            7);
}

TEST(ArrayBuffer, HoldsTheElementsOfAllDimensions) {
  const Ref<ArrayBuffer> array(new ArrayBuffer({{1, 2}, {-1, 3}}));
  EXPECT_EQ(array->Elements().size(), 6U);
  EXPECT_TRUE(array->Elements()[5].IsEmpty());
  EXPECT_EQ(array->Bounds()[1].lower, -1);
}

TEST(ArrayBuffer, OfNoElementsHasNone) {
  EXPECT_EQ(MakeArray(0)->Elements().size(), 0U);
  EXPECT_EQ(MakeArray(-1)->Elements().size(), 0U);
  EXPECT_EQ(Ref<ArrayBuffer>(new ArrayBuffer({}))->Elements().size(), 0U);
}

TEST(Variant, IsEmptyWhenNew) {
  const Variant value{};
  EXPECT_TRUE(value.IsEmpty());
  EXPECT_FALSE(value.IsNull());
  EXPECT_FALSE(value.IsObject());
  EXPECT_FALSE(value.IsMissing());
}

TEST(Variant, CarriesEveryTypeUnderItsNumber) {
  const auto number = [](const Variant& value) { return static_cast<int>(value.Type()); };
  EXPECT_EQ(number(Variant()), 0);
  EXPECT_EQ(number(Variant::Null()), 1);
  EXPECT_EQ(number(Variant::FromInteger(1)), 2);
  EXPECT_EQ(number(Variant::FromLong(1)), 3);
  EXPECT_EQ(number(Variant::FromSingle(1)), 4);
  EXPECT_EQ(number(Variant::FromDouble(1)), 5);
  EXPECT_EQ(number(Variant::FromCurrency(1)), 6);
  EXPECT_EQ(number(Variant::FromDate(1)), 7);
  EXPECT_EQ(number(Variant::FromText("a")), 8);
  EXPECT_EQ(number(Variant::FromObject(nullptr)), 9);
  EXPECT_EQ(number(Variant::FromErrorCode(1)), 10);
  EXPECT_EQ(number(Variant::FromBoolean(true)), 11);
  EXPECT_EQ(number(Variant::FromByte(1)), 17);
  EXPECT_EQ(number(Variant::FromArray(MakeArray(1))), 0x200C);
}

TEST(Variant, GivesTheRawContentsBack) {
  EXPECT_EQ(Variant::FromInteger(-5).AsInteger(), -5);
  EXPECT_EQ(Variant::FromLong(70000).AsLong(), 70000);
  EXPECT_EQ(Variant::FromSingle(1.5F).AsSingle(), 1.5F);
  EXPECT_EQ(Variant::FromDouble(2.5).AsDouble(), 2.5);
  EXPECT_EQ(Variant::FromCurrency(12345).AsCurrency(), 12345);
  EXPECT_EQ(Variant::FromText("a€").AsUtf16(), u"a€");
  EXPECT_TRUE(Variant::FromBoolean(true).AsBoolean());
  EXPECT_EQ(Variant::FromByte(200).AsByte(), 200);
  EXPECT_EQ(Variant::FromErrorCode(7).AsErrorCode(), 7);
  EXPECT_EQ(Variant::FromArray(MakeArray(3)).AsArray()->Elements().size(), 3U);
}

TEST(Variant, TrueIsMinusOne) { EXPECT_EQ(ToLong(Variant::FromBoolean(true)), -1); }

TEST(Variant, CopiesShareTheirText) {
  const Variant a = Variant::FromText("shared");
  const Variant b = a;  // NOLINT(performance-unnecessary-copy-initialization): the copy is the test
  EXPECT_EQ(a.AsStringBuffer(), b.AsStringBuffer());
  EXPECT_TRUE(a.AsStringBuffer()->IsShared());
}

TEST(Variant, AMovedOneIsEmpty) {
  Variant a = Variant::FromText("x");
  const Variant b = std::move(a);
  EXPECT_TRUE(a.IsEmpty());  // NOLINT(bugprone-use-after-move): what is left is the test
  EXPECT_FALSE(b.AsStringBuffer()->IsShared());
}

TEST(Variant, AssigningItselfKeepsIt) {
  Variant a = Variant::FromText("x");
  const Variant& same = a;
  a = same;
  EXPECT_EQ(ToText(a), "x");
}

TEST(Variant, HoldsItsObjectUntilItGoes) {
  int alive = 0;
  {
    Variant a = Variant::FromObject(Make<Counted>(alive));
    const Variant b = a;
    EXPECT_EQ(alive, 1);
    a = Variant();
    EXPECT_EQ(alive, 1);
  }
  EXPECT_EQ(alive, 0);
}

TEST(Variant, AnArrayFreesItsElements) {
  int alive = 0;
  {
    const auto array = MakeArray(2);
    array->Elements()[1] = Variant::FromObject(Make<Counted>(alive));
    const Variant value = Variant::FromArray(array);
    EXPECT_EQ(alive, 1);
  }
  EXPECT_EQ(alive, 0);
}

TEST(Variant, KnowsAnArgumentThatWasLeftOut) {
  EXPECT_TRUE(Variant::Missing().IsMissing());
  EXPECT_FALSE(Variant::FromErrorCode(5).IsMissing());
  EXPECT_FALSE(Variant().IsMissing());
}

TEST(Variant, AReferenceReadsAndWritesItsTarget) {
  Variant target = Variant::FromLong(1);
  Variant reference = Variant::ByReference(&target);
  EXPECT_EQ(ToLong(reference), 1);
  reference.Target() = Variant::FromText("new");
  EXPECT_EQ(ToText(target), "new");
  EXPECT_EQ(reference.AsReference(), &target);
}

TEST(Variant, LongRoundsHalvesToTheEvenNumber) {
  EXPECT_EQ(ToLong(Variant::FromDouble(0.5)), 0);
  EXPECT_EQ(ToLong(Variant::FromDouble(1.5)), 2);
  EXPECT_EQ(ToLong(Variant::FromDouble(2.5)), 2);
  EXPECT_EQ(ToLong(Variant::FromDouble(-1.5)), -2);
  EXPECT_EQ(ToLong(Variant::FromText("2.5")), 2);
  EXPECT_EQ(ToLong(Variant::FromCurrency(25000)), 2);
}

TEST(Variant, LongOverflowsBeyondThirtyTwoBits) {
  EXPECT_EQ(ToLong(Variant::FromDouble(2147483647.4)), 2147483647);
  EXPECT_EQ(ErrorOf([] { ToLong(Variant::FromDouble(2147483647.5)); }).Number(), kOverflow);
  EXPECT_EQ(ErrorOf([] { ToLong(Variant::FromDouble(-2147483649.0)); }).Number(), kOverflow);
  EXPECT_EQ(ErrorOf([] { ToLong(Variant::FromDouble(NAN)); }).Number(), kOverflow);
  EXPECT_EQ(ErrorOf([] { ToLong(Variant::FromText("1e400")); }).Number(), kOverflow);
}

TEST(Variant, IntegerOverflowsBeyondSixteenBits) {
  EXPECT_EQ(ToInteger(Variant::FromLong(-32768)), -32768);
  EXPECT_EQ(ErrorOf([] { ToInteger(Variant::FromLong(32768)); }).Number(), kOverflow);
}

TEST(Variant, NumbersComeFromEveryTypeThatHasOne) {
  EXPECT_EQ(ToDouble(Variant()), 0);
  EXPECT_EQ(ToDouble(Variant::FromByte(7)), 7);
  EXPECT_EQ(ToDouble(Variant::FromInteger(-7)), -7);
  EXPECT_EQ(ToDouble(Variant::FromLong(7)), 7);
  EXPECT_EQ(ToDouble(Variant::FromSingle(0.5F)), 0.5);
  EXPECT_EQ(ToDouble(Variant::FromDate(1.25)), 1.25);
  EXPECT_EQ(ToDouble(Variant::FromCurrency(12500)), 1.25);
  EXPECT_EQ(ToDouble(Variant::FromText(" 1.25 ")), 1.25);
  EXPECT_EQ(ToDouble(Variant::FromText("+1")), 1);
  EXPECT_EQ(ToDouble(Variant::FromText("1e-400")), 0);
  EXPECT_EQ(ToDouble(Variant::FromText("&H10")), 16);
  EXPECT_EQ(ToDouble(Variant::FromText("&HFFFF&")), 65535);
  EXPECT_EQ(ToDate(Variant::FromLong(3)), 3);
}

TEST(Variant, WhatIsNoNumberIsATypeMismatch) {
  for (const char* text :
       {"", " ", "abc", "1x", "&H", "&H1G", "&H10zz", "&H123456789", "+-5", "--5", "inf", "nan"}) {
    EXPECT_EQ(ErrorOf([&] { ToLong(Variant::FromText(text)); }).Number(), kTypeMismatch) << text;
  }
  EXPECT_EQ(ErrorOf([] { ToLong(Variant::FromObject(nullptr)); }).Number(), kTypeMismatch);
  EXPECT_EQ(ErrorOf([] { ToLong(Variant::FromArray(MakeArray(1))); }).Number(), kTypeMismatch);
  EXPECT_EQ(ErrorOf([] { ToLong(Variant::Missing()); }).Number(), kTypeMismatch);
}

TEST(Variant, NullCanNotBeConverted) {
  EXPECT_EQ(ErrorOf([] { ToLong(Variant::Null()); }).Number(), kInvalidUseOfNull);
  EXPECT_EQ(ErrorOf([] { ToText(Variant::Null()); }).Number(), kInvalidUseOfNull);
  EXPECT_EQ(ErrorOf([] { ToBoolean(Variant::Null()); }).Number(), kInvalidUseOfNull);
}

TEST(Variant, BooleansComeFromWordsAndNumbers) {
  EXPECT_TRUE(ToBoolean(Variant::FromText("True")));
  EXPECT_TRUE(ToBoolean(Variant::FromText(" TRUE ")));
  EXPECT_FALSE(ToBoolean(Variant::FromText("false")));
  EXPECT_TRUE(ToBoolean(Variant::FromText("-1")));
  EXPECT_TRUE(ToBoolean(Variant::FromText("2")));
  EXPECT_FALSE(ToBoolean(Variant::FromText("0")));
  EXPECT_TRUE(ToBoolean(Variant::FromDouble(0.1)));
  EXPECT_FALSE(ToBoolean(Variant()));
  EXPECT_EQ(ErrorOf([] { ToBoolean(Variant::FromText("yes")); }).Number(), kTypeMismatch);
}

TEST(Variant, TextComesFromEveryScalar) {
  EXPECT_EQ(ToText(Variant()), "");
  EXPECT_EQ(ToText(Variant::FromByte(255)), "255");
  EXPECT_EQ(ToText(Variant::FromInteger(-3)), "-3");
  EXPECT_EQ(ToText(Variant::FromLong(70000)), "70000");
  EXPECT_EQ(ToText(Variant::FromBoolean(true)), "True");
  EXPECT_EQ(ToText(Variant::FromBoolean(false)), "False");
  EXPECT_EQ(ToText(Variant::FromDate(36974.545138888889)), "3/24/2001 1:05:00 PM");
  EXPECT_EQ(ToText(Variant::FromText("äöü€")), "äöü€");
  EXPECT_EQ(ErrorOf([] { ToText(Variant::FromObject(nullptr)); }).Number(), kTypeMismatch);
}

TEST(Variant, NumbersPrintWithTheirSignificantDigits) {
  EXPECT_EQ(ToText(Variant::FromDouble(0.1)), "0.1");
  EXPECT_EQ(ToText(Variant::FromDouble(1.0 / 3)), "0.333333333333333");
  EXPECT_EQ(ToText(Variant::FromDouble(1e20)), "1E+20");
  EXPECT_EQ(ToText(Variant::FromSingle(0.1F)), "0.1");
  EXPECT_EQ(ToText(Variant::FromDouble(-2)), "-2");
}

TEST(Variant, CurrencyPrintsUpToFourDecimals) {
  EXPECT_EQ(ToText(Variant::FromCurrency(12345)), "1.2345");
  EXPECT_EQ(ToText(Variant::FromCurrency(-10500)), "-1.05");
  EXPECT_EQ(ToText(Variant::FromCurrency(20000)), "2");
  EXPECT_EQ(ToText(Variant::FromCurrency(std::numeric_limits<std::int64_t>::min())), "-922337203685477.5808");
}

TEST(Variant, ObjectsComeFromObjectsOnly) {
  EXPECT_EQ(ToObject(Variant::FromObject(nullptr)), nullptr);
  EXPECT_EQ(ErrorOf([] { ToObject(Variant::FromLong(0)); }).Number(), kTypeMismatch);
  EXPECT_EQ(ErrorOf([] { ToObject(Variant()); }).Number(), kTypeMismatch);
}

TEST(Variant, ConversionsFollowReferences) {
  Variant target = Variant::FromText("12");
  const Variant reference = Variant::ByReference(&target);
  EXPECT_EQ(ToLong(reference), 12);
  EXPECT_EQ(ToText(reference), "12");
  EXPECT_TRUE(ToBoolean(reference));
}

}  // namespace
}  // namespace hearthmake::automation
