#include "adapters/catalog/JsonNode.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <nlohmann/json.hpp>

namespace hearthmake::catalog {
namespace {

using nlohmann::ordered_json;
using testing::ElementsAre;

constexpr auto kLeast = std::numeric_limits<std::int64_t>::min();
constexpr auto kMost = std::numeric_limits<std::int64_t>::max();

class JsonNodeTest : public testing::Test {
 protected:
  const ordered_json json = ordered_json::parse(R"({
    "text": "x", "no": false, "none": null, "half": 2.5, "seven": 7, "minus": -7,
    "least": -9223372036854775808, "most": 9223372036854775807, "above": 9223372036854775808,
    "list": [1, {"z": "in", "a/b": [true]}, "last"]})");
  const JsonNode root{json};
};

// "place: what", or nothing where nothing is refused.
std::string Refusal(const std::function<void()>& read) {
  try {
    read();
  } catch (const JsonMisfit& misfit) {
    return misfit.place + ": " + misfit.what;
  }
  return "";
}

TEST_F(JsonNodeTest, TellsNullFromOtherValues) {
  EXPECT_TRUE(root.Member("none").IsNull());
  EXPECT_FALSE(root.Member("no").IsNull());
}

TEST_F(JsonNodeTest, RefusesWithItsPlace) {
  EXPECT_EQ(Refusal([&] { root.Refuse("bad"); }), ": bad");
  EXPECT_EQ(Refusal([&] { root.Member("list").Refuse("bad"); }), "/list: bad");
  const JsonNode item = root.Member("list").Items().at(1);
  EXPECT_EQ(Refusal([&] { item.Refuse("bad"); }), "/list/1: bad");
  EXPECT_EQ(Refusal([&] { item.Member("a/b").Items().at(0).Refuse("bad"); }), "/list/1/a/b/0: bad");
}

TEST_F(JsonNodeTest, StandsWhereItIsSaidToStand) {
  EXPECT_EQ(Refusal([&] { JsonNode(json, "/part").Member("no").Text(); }), "/part/no: a text is expected");
}

TEST_F(JsonNodeTest, FindsMembersOfObjects) {
  EXPECT_TRUE(root.Has("none"));
  EXPECT_FALSE(root.Has("None"));
  EXPECT_EQ(root.Member("text").Json(), "x");
  EXPECT_EQ(&root.RequireObject(), &root);
}

TEST_F(JsonNodeTest, TellsWhichMemberIsMissing) {
  EXPECT_EQ(Refusal([&] { root.Member("list").Items().at(1).Member("y"); }), "/list/1: \"y\" is missing");
}

TEST_F(JsonNodeTest, RefusesMembersOfWhatIsNoObject) {
  const JsonNode list = root.Member("list");
  const std::string refusal = "/list: an object ({...}) is expected";
  EXPECT_EQ(Refusal([&] { list.RequireObject(); }), refusal);
  EXPECT_EQ(Refusal([&] { list.Has("z"); }), refusal);
  EXPECT_EQ(Refusal([&] { list.Member("z"); }), refusal);
  EXPECT_EQ(Refusal([&] { list.Members(); }), refusal);
}

TEST_F(JsonNodeTest, GivesMembersInTheirOrder) {
  std::vector<std::string> places;
  for (const auto& [name, node] : root.Member("list").Items().at(1).Members())
    places.push_back(Refusal([&, &member = node] { member.Refuse("here"); }) + " " + name);
  EXPECT_THAT(places, ElementsAre("/list/1/z: here z", "/list/1/a/b: here a/b"));
}

TEST_F(JsonNodeTest, GivesItemsOfListsAlone) {
  EXPECT_EQ(root.Member("list").Items().size(), 3U);
  EXPECT_EQ(root.Member("list").Items().at(2).Text(), "last");
  EXPECT_EQ(Refusal([&] { root.Items(); }), ": a list ([...]) is expected");
  EXPECT_EQ(Refusal([&] { root.Member("text").Items(); }), "/text: a list ([...]) is expected");
}

TEST_F(JsonNodeTest, ConvertsNothing) {
  EXPECT_EQ(root.Member("text").Text(), "x");
  EXPECT_EQ(Refusal([&] { root.Member("seven").Text(); }), "/seven: a text is expected");
  EXPECT_FALSE(root.Member("no").YesNo());
  EXPECT_EQ(Refusal([&] { root.Member("none").YesNo(); }), "/none: true or false is expected");
  EXPECT_EQ(root.Member("half").Number(), 2.5);
  EXPECT_EQ(root.Member("minus").Number(), -7);
  EXPECT_EQ(Refusal([&] { root.Member("text").Number(); }), "/text: a number is expected");
}

TEST_F(JsonNodeTest, ReadsWholeNumbersWithinLimits) {
  const JsonNode seven = root.Member("seven");
  EXPECT_EQ(seven.Whole(7, 7), 7);
  EXPECT_EQ(seven.Whole(8, 9), std::nullopt);
  EXPECT_EQ(seven.Whole(-9, 6), std::nullopt);
  EXPECT_EQ(root.Member("minus").Whole(-7, 0), -7);
  EXPECT_EQ(root.Member("minus").Whole(0, kMost), std::nullopt);
}

TEST_F(JsonNodeTest, ReadsWholeNumbersOf64Bits) {
  EXPECT_EQ(root.Member("least").Whole(kLeast, kMost), kLeast);
  EXPECT_EQ(root.Member("most").Whole(kLeast, kMost), kMost);
  EXPECT_EQ(root.Member("above").Whole(kLeast, kMost), std::nullopt);
}

TEST_F(JsonNodeTest, TakesNothingElseForAWholeNumber) {
  for (const char* name : {"text", "no", "none", "half", "list"})
    EXPECT_EQ(root.Member(name).Whole(kLeast, kMost), std::nullopt) << name;
}

}  // namespace
}  // namespace hearthmake::catalog
