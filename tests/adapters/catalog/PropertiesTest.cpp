#include "adapters/catalog/Properties.hpp"

#include <gtest/gtest.h>

#include <limits>

#include "automation/Object.hpp"
#include "support/ErrorExpect.hpp"

namespace hearthmake::catalog {
namespace {

using automation::Variant;
using automation::VariantType;

std::string Names(const Properties& properties) {
  std::string names;
  for (const Property& property : properties.All()) names += property.name + " ";
  return names;
}

TEST(Properties, KeepTheOrderInWhichTheyWereFirstSet) {
  Properties properties;
  properties.Set("Queuing", Variant::FromBoolean(true));
  properties.Set("Listener", Variant::FromBoolean(false));
  properties.Set("QUEUING", Variant::FromBoolean(false));
  EXPECT_EQ(Names(properties), "Queuing Listener ");
  EXPECT_FALSE(automation::ToBoolean(properties.Value("queuing")));
}

TEST(Properties, AreEmptyWhereTheyWereNeverSet) {
  EXPECT_TRUE(Properties().Value("Name").IsEmpty());
  EXPECT_EQ(Properties().Find("Name"), nullptr);
}

TEST(Properties, FollowReferences) {
  Variant text = Variant::FromText("Orders");
  Properties properties;
  properties.Set("Name", Variant::ByReference(&text));
  text = Variant::FromText("Stock");
  EXPECT_EQ(automation::ToText(properties.Value("Name")), "Orders");
}

TEST(Properties, KeepOfAPasswordOnlyWhetherThereIsOne) {
  Properties properties;
  properties.Set("Password", Variant::FromText("s3cret"));
  EXPECT_TRUE(properties.Value("Password").IsEmpty());
  ASSERT_NE(properties.Find("password"), nullptr);
  EXPECT_TRUE(properties.Find("password")->isSecret);
  EXPECT_TRUE(properties.Find("password")->value.AsBoolean());
  properties.Set("Password", Variant::FromText(""));
  EXPECT_FALSE(properties.Find("password")->value.AsBoolean());
}

TEST(Properties, RefuseWhatCanNotBeStored) {
  Properties properties;
  for (const Variant& value :
       {Variant::FromObject(nullptr), Variant::FromDouble(std::numeric_limits<double>::infinity()),
        Variant::FromSingle(std::numeric_limits<float>::quiet_NaN()),
        Variant::FromArray(automation::Ref<automation::ArrayBuffer>(
            new automation::ArrayBuffer({automation::ArrayBuffer::Bound{0, 1}})))}) {
    support::ExpectError([&] { properties.Set("Odd", value); }, 13, "Catalog", "Type mismatch: Odd");
  }
  EXPECT_TRUE(properties.IsEmpty());
}

TEST(Properties, AreTheSameOnlyWithTheSameType) {
  EXPECT_TRUE(IsSame({"a", Variant::FromLong(3)}, {"a", Variant::FromLong(3)}));
  EXPECT_FALSE(IsSame({"a", Variant::FromLong(3)}, {"a", Variant::FromText("3")}));
  EXPECT_FALSE(IsSame({"a", Variant::FromText("x")}, {"a", Variant::FromText("X")}));
  EXPECT_FALSE(IsSame({"a", Variant::FromBoolean(true)}, {"a", Variant::FromBoolean(true), true}));
  EXPECT_FALSE(IsSame({"a", Variant::FromDouble(1.5)}, {"a", Variant::FromDouble(2.5)}));
}

}  // namespace
}  // namespace hearthmake::catalog
