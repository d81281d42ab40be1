#include "vbscript/objects/DictionaryKey.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <set>

#include "support/ScriptObjectBench.hpp"
#include "vbscript/Errors.hpp"
#include "vbscript/objects/Dictionary.hpp"

namespace hearthmake::vbscript {
namespace {

using automation::Variant;

// Keys that are the same must have the same hash value too.
bool Same(const Variant& a, const Variant& b, bool ignoreCase = false) {
  const bool isSame = IsSameKey(a, b, ignoreCase);
  EXPECT_EQ(isSame, IsSameKey(b, a, ignoreCase));
  if (isSame) {
    EXPECT_EQ(HashKey(a, ignoreCase), HashKey(b, ignoreCase));
  }
  return isSame;
}

TEST(DictionaryKey, ComparesNumbersOfEverySubtypeByTheirValue) {
  const Variant ones[] = {Variant::FromByte(1),   Variant::FromInteger(1), Variant::FromLong(1),
                          Variant::FromSingle(1), Variant::FromDouble(1),  Variant::FromCurrency(10'000),
                          Variant::FromDate(1)};
  for (const Variant& a : ones) {
    for (const Variant& b : ones) EXPECT_TRUE(Same(a, b));
    EXPECT_FALSE(Same(a, Variant::FromDouble(1.5)));
    EXPECT_FALSE(Same(a, Text(u"1")));
    EXPECT_FALSE(Same(a, Variant()));
  }
  EXPECT_TRUE(Same(Variant::FromBoolean(true), Number(-1)));
  EXPECT_TRUE(Same(Variant::FromBoolean(false), Variant::FromDouble(-0.0)));
  EXPECT_FALSE(Same(Variant::FromSingle(0.1F), Variant::FromDouble(0.1)));
}

TEST(DictionaryKey, TakesOneNaNForAnother) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_TRUE(Same(Variant::FromDouble(nan), Variant::FromDouble(-nan)));
  EXPECT_TRUE(Same(Variant::FromDouble(nan), Variant::FromSingle(static_cast<float>(nan))));
  EXPECT_FALSE(Same(Variant::FromDouble(nan), Variant::FromDouble(0)));
}

TEST(DictionaryKey, TellsLargeAmountsApart) {
  const std::int64_t large = std::numeric_limits<std::int64_t>::max();
  EXPECT_FALSE(Same(Variant::FromCurrency(large), Variant::FromCurrency(large - 1)));
  EXPECT_TRUE(Same(Variant::FromCurrency(large), Variant::FromCurrency(large)));
}

TEST(DictionaryKey, ComparesTextsByTheirUnits) {
  EXPECT_TRUE(Same(Text(u"abc"), Text(u"abc")));
  EXPECT_FALSE(Same(Text(u"abc"), Text(u"ABC")));
  EXPECT_FALSE(Same(Text(std::u16string_view(u"a\0", 2)), Text(u"a")));
  EXPECT_FALSE(Same(Text(u""), Variant()));
  EXPECT_FALSE(Same(Text(u""), Number(0)));
}

TEST(DictionaryKey, ComparesTextsWithoutRegardToCase) {
  EXPECT_TRUE(Same(Text(u"aB\u0416"), Text(u"Ab\u0436"), true));
  EXPECT_FALSE(Same(Text(u"ab"), Text(u"ac"), true));
}

TEST(DictionaryKey, ComparesObjectsByIdentity) {
  const auto make = [] {
    return Variant::FromObject(automation::Ref<automation::Object>(automation::Make<Dictionary>()));
  };
  const Variant one = make();
  EXPECT_TRUE(Same(one, one));
  EXPECT_FALSE(Same(one, make()));
  EXPECT_FALSE(Same(one, Variant::FromObject(nullptr)));
  EXPECT_TRUE(Same(Variant::FromObject(nullptr), Variant::FromObject(nullptr)));
}

TEST(DictionaryKey, KnowsEmptyNullAndErrorCodes) {
  EXPECT_TRUE(Same(Variant(), Variant()));
  EXPECT_TRUE(Same(Variant::Null(), Variant::Null()));
  EXPECT_FALSE(Same(Variant(), Variant::Null()));
  EXPECT_FALSE(Same(Variant(), Number(0)));
  EXPECT_TRUE(Same(Variant::FromErrorCode(7), Variant::FromErrorCode(7)));
  EXPECT_FALSE(Same(Variant::FromErrorCode(7), Variant::FromErrorCode(8)));
  EXPECT_FALSE(Same(Variant::FromErrorCode(7), Number(7)));
}

TEST(DictionaryKey, RefusesArrays) {
  const Variant array =
      Variant::FromArray(automation::Ref<automation::ArrayBuffer>(new automation::ArrayBuffer({{0, 1}})));
  EXPECT_EQ(ErrorOf([&] { HashKey(array, false); }), number::kInvalidProcedureCall);
}

TEST(DictionaryKey, SpreadsKeysThatAreAlike) {
  std::set<std::uint32_t> low;
  for (int i = 0; i < 4096; ++i) low.insert(HashKey(Number(i * 4096), false) % 8192);
  EXPECT_GT(low.size(), 2800u);  // as many as chance gives
  low.clear();
  for (int i = 0; i < 4096; ++i) {
    const std::string text = "key" + std::to_string(i);
    low.insert(HashKey(Variant::FromText(text), false) % 8192);
  }
  EXPECT_GT(low.size(), 2800u);
}

}  // namespace
}  // namespace hearthmake::vbscript
