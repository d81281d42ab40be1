#include "host/graph/Digraph.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <numeric>

namespace hearthmake::host {
namespace {

using testing::ElementsAre;
using testing::Lt;

TEST(Digraph, LeavesOutWhatIsNamedTwiceOrIsNoNode) {
  const Digraph graph({{1, 1, 9}, {}});
  EXPECT_THAT(graph.Targets(0), ElementsAre(1U));
  EXPECT_EQ(graph.EdgeCount(), 1U);
  EXPECT_TRUE(graph.PointsTo(0, 1));
  EXPECT_FALSE(graph.PointsTo(1, 0));
}

TEST(Digraph, NumbersComponentsTargetsFirst) {
  // 0 and 1 form a cycle that points to 2; 3 points to the cycle.
  const Digraph::Nodes components = Digraph({{1}, {0, 2}, {}, {0}}).Components();
  EXPECT_EQ(components[0], components[1]);
  EXPECT_THAT(components[2], Lt(components[0]));
  EXPECT_THAT(components[0], Lt(components[3]));
}

TEST(Digraph, KnowsTheEdgesOfCycles) {
  const auto cyclic = Digraph({{1}, {0, 2}, {2}}).CyclicEdges();
  EXPECT_THAT(cyclic[0], ElementsAre(true));
  EXPECT_THAT(cyclic[1], ElementsAre(true, false));
  EXPECT_THAT(cyclic[2], ElementsAre(true));
}

TEST(Digraph, LeavesOutEdgesThatOthersImply) {
  const Digraph reduced = Digraph({{}, {0}, {0, 1}, {0, 1, 2}}).Reduced();
  EXPECT_THAT(reduced.Targets(1), ElementsAre(0U));
  EXPECT_THAT(reduced.Targets(2), ElementsAre(1U));
  EXPECT_THAT(reduced.Targets(3), ElementsAre(2U));
}

TEST(Digraph, KeepsTheEdgesOfCyclesWhenItReduces) {
  const Digraph reduced = Digraph({{1, 2}, {2}, {0}, {0, 1}}).Reduced();
  EXPECT_THAT(reduced.Targets(0), ElementsAre(1U, 2U));
  EXPECT_THAT(reduced.Targets(3), ElementsAre(0U, 1U));
}

TEST(Digraph, ReachesTheSameWhenItIsReduced) {
  std::vector<Digraph::Nodes> targets(60);
  for (std::size_t i = 0; i < targets.size(); ++i) {
    for (std::size_t j = 0; j < i; ++j)
      if ((i * 7 + j * 13) % 5 == 0) targets[i].push_back(j);
  }
  targets[3].push_back(20);
  const Digraph graph(targets);
  const Digraph reduced = graph.Reduced();
  EXPECT_LT(reduced.EdgeCount(), graph.EdgeCount() / 2);
  for (std::size_t node = 0; node < graph.Size(); ++node)
    EXPECT_EQ(reduced.ReachableFrom({node}), graph.ReachableFrom({node})) << node;
}

TEST(Digraph, FollowsAChainAsLongAsTheGraph) {
  constexpr std::size_t kLength = 5000;
  std::vector<Digraph::Nodes> targets(kLength);
  for (std::size_t i = 1; i < kLength; ++i) targets[i] = {i - 1};
  const Digraph graph(targets);
  EXPECT_EQ(graph.ReachableFrom({kLength - 1}).size(), kLength);
  EXPECT_EQ(graph.Reduced().EdgeCount(), kLength - 1);
}

TEST(Digraph, TakesAPartAndTurnsRound) {
  const Digraph graph({{1, 2}, {2}, {}});
  const Digraph part = graph.Part({0, 2});
  EXPECT_THAT(part.Targets(0), ElementsAre(1U));
  EXPECT_THAT(graph.Reversed().Targets(2), ElementsAre(0U, 1U));
}

}  // namespace
}  // namespace hearthmake::host
