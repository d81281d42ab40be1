#pragma once

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "support/VbsValues.hpp"

namespace hearthmake::vbscript {

// One operand of every subtype that has a value, in the order of the tables of the tests. A cell of a table
// is a letter for the subtype and the value: N Null, b Boolean, y Byte, i Integer, l Long, s Single,
// d Double, c Currency, t Date (as a number), $ String; !13 is error 13.
inline const std::vector<automation::Variant>& VbsOperands() {
  using automation::Variant;
  static const std::vector<Variant> kOperands = {Variant(),
                                                 Variant::Null(),
                                                 Variant::FromBoolean(true),
                                                 Variant::FromByte(3),
                                                 Variant::FromInteger(5),
                                                 Variant::FromLong(70000),
                                                 Variant::FromSingle(1.5F),
                                                 Variant::FromDouble(2.5),
                                                 Variant::FromCurrency(12500),
                                                 Variant::FromDate(2),
                                                 Variant::FromText("7"),
                                                 Variant::FromText("abc")};
  return kOperands;
}

inline automation::Variant VbsArray() {
  using automation::ArrayBuffer;
  return automation::Variant::FromArray(automation::Ref<ArrayBuffer>(new ArrayBuffer({{0, 1}})));
}

inline std::string VbsCell(const std::string& outcome) {
  if (outcome.starts_with('E') && outcome != "Empty" && !outcome.starts_with("Error"))
    return "!" + outcome.substr(1);
  const std::size_t space = outcome.find(' ');
  const std::string subtype = outcome.substr(0, space);
  const std::string value = space == std::string::npos ? "" : outcome.substr(space + 1);
  if (subtype == "Null") return "N";
  if (subtype == "Boolean") return value == "True" ? "bT" : "bF";
  if (subtype == "Byte") return "y" + value;
  if (subtype == "Integer") return "i" + value;
  if (subtype == "Long") return "l" + value;
  if (subtype == "Single") return "s" + value;
  if (subtype == "Double") return "d" + value;
  if (subtype == "Currency") return "c" + value;
  if (subtype == "Date") return "t" + value;
  if (subtype == "String") return "$" + value;
  return outcome;
}

// Every operand on the left with every operand on the right, against a table of twelve rows of twelve cells.
template <class Operator>
void ExpectMatrix(Operator apply, const char* table) {
  std::istringstream cells(table);
  const auto& operands = VbsOperands();
  for (const auto& left : operands) {
    for (const auto& right : operands) {
      std::string expected;
      ASSERT_TRUE(cells >> expected);
      EXPECT_EQ(VbsCell(VbsOutcome([&] { return apply(left, right); })), expected)
          << VbsDescribe(left) << " with " << VbsDescribe(right);
    }
  }
}

// What no operator takes: an array and an error are type mismatches on either side of anything, Nothing is
// error 91, an object without a default member 438.
template <class Operator>
void ExpectRefusals(Operator apply) {
  using automation::Variant;
  const Variant nothing = Variant::FromObject(nullptr);
  const Variant plain = Variant::FromObject(automation::Make<VbsPlainObject>());
  std::vector<Variant> partners = VbsOperands();
  partners.push_back(VbsArray());
  partners.push_back(Variant::FromErrorCode(5));
  for (const Variant& partner : partners) {
    const std::string about = VbsDescribe(partner);
    for (const Variant& refused : {VbsArray(), Variant::FromErrorCode(5)}) {
      EXPECT_EQ(VbsOutcome([&] { return apply(refused, partner); }), "E13") << about;
      EXPECT_EQ(VbsOutcome([&] { return apply(partner, refused); }), "E13") << about;
    }
    EXPECT_EQ(VbsOutcome([&] { return apply(nothing, partner); }), "E91") << about;
    EXPECT_EQ(VbsOutcome([&] { return apply(partner, nothing); }), "E91") << about;
    EXPECT_EQ(VbsOutcome([&] { return apply(plain, partner); }), "E438") << about;
    EXPECT_EQ(VbsOutcome([&] { return apply(partner, plain); }), "E438") << about;
  }
}

// References and objects stand for their values: every pair again through both.
template <class Operator>
void ExpectIndirectOperands(Operator apply) {
  using automation::Variant;
  for (const Variant& left : VbsOperands()) {
    for (const Variant& right : VbsOperands()) {
      const std::string expected = VbsOutcome([&] { return apply(left, right); });
      Variant target = left;
      const Variant reference = Variant::ByReference(&target);
      const Variant object = Variant::FromObject(automation::Make<VbsDefaultObject>(right));
      const Variant nested = Variant::FromObject(automation::Make<VbsDefaultObject>(object));
      EXPECT_EQ(VbsOutcome([&] { return apply(reference, object); }), expected);
      EXPECT_EQ(VbsOutcome([&] { return apply(reference, nested); }), expected);
    }
  }
}

}  // namespace hearthmake::vbscript
