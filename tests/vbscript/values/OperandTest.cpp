#include "vbscript/values/Operand.hpp"

#include <gtest/gtest.h>

#include "support/VbsValues.hpp"
#include "vbscript/values/Operators.hpp"

namespace hearthmake::vbscript {
namespace {

Variant Carrier(const Variant& value) {
  return Variant::FromObject(automation::Make<VbsDefaultObject>(value));
}

// Gives itself, for ever.
class SelfObject : public automation::Object {
 public:
  const automation::Interface& Declaration() const override {
    static const automation::Interface declaration("Self", "_Self", "", "");
    return declaration;
  }
  Variant Invoke(std::int32_t, automation::InvokeKind, std::span<Variant>) override {
    return Variant::FromObject(automation::Ref<automation::Object>(this));
  }
};

TEST(Operand, IsTheValueItselfWithoutACopy) {
  const Variant value = Variant::FromText("x");
  EXPECT_EQ(&Operand(value).Value(), &value);
  Variant target = value;
  const Variant reference = Variant::ByReference(&target);
  EXPECT_EQ(&Operand(reference).Value(), &target);
}

TEST(Operand, ReadsDefaultMembersToTheEnd) {
  const Variant three = Variant::FromInteger(3);
  EXPECT_EQ(VbsDescribe(Operand(Carrier(three)).Value()), "Integer 3");
  EXPECT_EQ(VbsDescribe(ValueOf(Carrier(Carrier(Carrier(three))))), "Integer 3");
  Variant target = Carrier(three);
  EXPECT_EQ(VbsDescribe(ValueOf(Variant::ByReference(&target))), "Integer 3");
}

TEST(Operand, RefusesNothingAndObjectsWithoutADefaultMember) {
  EXPECT_EQ(VbsOutcome([] { return ValueOf(Variant::FromObject(nullptr)); }), "E91");
  EXPECT_EQ(VbsOutcome([] { return ValueOf(Carrier(Variant::FromObject(nullptr))); }), "E91");
  EXPECT_EQ(VbsOutcome([] { return ValueOf(Variant::FromObject(automation::Make<VbsPlainObject>())); }),
            "E438");
}

TEST(Operand, EndsWithAnObjectThatGivesItself) {
  EXPECT_EQ(VbsOutcome([] { return ValueOf(Variant::FromObject(automation::Make<SelfObject>())); }), "E28");
}

}  // namespace
}  // namespace hearthmake::vbscript
