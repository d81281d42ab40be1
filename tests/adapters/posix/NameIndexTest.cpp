#include "adapters/posix/NameIndex.hpp"

#include <gtest/gtest.h>

#include <deque>

namespace hearthmake::posix {
namespace {

struct Thing : NameIndex::Entry {
  Thing* previous = nullptr;
  Thing* next = nullptr;
};

class NameIndexTest : public ::testing::Test {
 protected:
  Thing& Add(const void* ownerOfIt, std::string_view name) {
    Thing& thing = things.emplace_back();
    index.Add(thing, {ownerOfIt, name}, name);
    return thing;
  }

  int owner = 0;
  int other = 0;
  std::deque<Thing> things;
  NameIndex index;
};

TEST_F(NameIndexTest, FindsNamesOfEveryLengthWithoutRegardToCase) {
  std::deque<std::string> names;
  for (std::size_t length = 0; length < 40; ++length) {
    names.push_back(std::string("aBcDeFgHiJkLmNoPqRsTuVwXyZ[@`{0123456789").substr(0, length));
    Add(&owner, names.back());
  }
  for (std::size_t length = 0; length < 40; ++length) {
    const auto same = std::string("AbCdEfGhIjKlMnOpQrStUvWxYz[@`{0123456789").substr(0, length);
    EXPECT_EQ(index.Find({&owner, same}), &things[length]) << same;
  }
  EXPECT_EQ(index.Find({&owner, "abcdefghX"}), nullptr);
  // Characters that differ by the same bit as the cases of a letter do.
  EXPECT_EQ(index.Find({&owner, "abcdefghijklmnopqrstuvwxyz{"}), nullptr);
}

TEST_F(NameIndexTest, FoldsLettersBeyondAsciiToo) {
  const Thing& thing = Add(&owner, "Größe");
  EXPECT_EQ(index.Find({&owner, "GRÖßE"}), &thing);
  EXPECT_EQ(index.Find({&owner, "Grösse"}), nullptr);
  const Thing& broken = Add(&owner, "a\xFFz");
  EXPECT_EQ(index.Find({&owner, "A\xFFZ"}), &broken);
}

TEST_F(NameIndexTest, TellsOwnersApart) {
  const Thing& thing = Add(&owner, "name");
  EXPECT_EQ(index.Find({&other, "name"}), nullptr);
  const Thing& second = Add(&other, "NAME");
  EXPECT_EQ(index.Find({&owner, "Name"}), &thing);
  EXPECT_EQ(index.Find({&other, "Name"}), &second);
}

TEST_F(NameIndexTest, FindsWhatIsThereAmongManyAddedAndRemoved) {
  std::deque<std::string> names;
  for (int i = 0; i < 5000; ++i) Add(&owner, names.emplace_back(std::to_string(i)));
  for (std::size_t i = 0; i < things.size(); i += 2) index.Remove(things[i]);
  for (std::size_t i = 0; i < things.size(); ++i)
    EXPECT_EQ(index.Find({&owner, names[i]}), i % 2 == 0 ? nullptr : &things[i]);
}

TEST(InOrderOfNames, SortsByFoldedName) {
  std::deque<Thing> things(3);
  Chain<Thing> chain;
  for (std::size_t i = 0; i < things.size(); ++i) {
    things[i].name = std::string_view("bCa").substr(i, 1);
    chain.Add(things[i]);
  }
  const auto sorted = InOrderOfNames(chain);
  ASSERT_EQ(sorted.size(), 3U);
  EXPECT_EQ(sorted[0]->name, "a");
  EXPECT_EQ(sorted[1]->name, "b");
  EXPECT_EQ(sorted[2]->name, "C");
}

}  // namespace
}  // namespace hearthmake::posix
