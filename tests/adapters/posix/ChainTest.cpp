#include "adapters/posix/Chain.hpp"

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace hearthmake::posix {
namespace {

struct Link {
  char letter = 0;
  Link* previous = nullptr;
  Link* next = nullptr;
};

std::string Letters(const Chain<Link>& chain) {
  std::string letters;
  for (const Link* link = chain.first; link != nullptr; link = link->next) letters += link->letter;
  letters += '|';
  for (const Link* link = chain.last; link != nullptr; link = link->previous) letters += link->letter;
  return letters;
}

TEST(Chain, KeepsTheOrderWhereverSomethingIsRemoved) {
  std::array<Link, 4> links = {Link{'a'}, Link{'b'}, Link{'c'}, Link{'d'}};
  Chain<Link> chain;
  EXPECT_EQ(Letters(chain), "|");
  for (Link& link : links) chain.Add(link);
  EXPECT_EQ(Letters(chain), "abcd|dcba");
  chain.Remove(links[1]);
  EXPECT_EQ(Letters(chain), "acd|dca");
  chain.Remove(links[0]);
  EXPECT_EQ(Letters(chain), "cd|dc");
  chain.Remove(links[3]);
  EXPECT_EQ(Letters(chain), "c|c");
  chain.Remove(links[2]);
  EXPECT_EQ(Letters(chain), "|");
  links[1] = {'b'};
  chain.Add(links[1]);
  EXPECT_EQ(Letters(chain), "b|b");
}

}  // namespace
}  // namespace hearthmake::posix
