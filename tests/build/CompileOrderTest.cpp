#include "build/CompileOrder.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>
#include <string>

namespace hearthmake {
namespace {

using Targets = std::vector<std::vector<std::uint32_t>>;

ReferenceGraph GraphOf(const Targets& targets) {
  ReferenceGraph graph;
  for (const auto& ofProject : targets) {
    graph.targets.insert(graph.targets.end(), ofProject.begin(), ofProject.end());
    graph.CloseProject();
  }
  return graph;
}

// The passes told literally: keyed lists, text signatures, one pass after the other up to the bound.
class LiteralPasses {
 public:
  explicit LiteralPasses(const Targets& targets) : m_targets(targets) {}

  CompileOrder Settle() {
    std::vector<std::uint32_t> list;
    for (std::uint32_t i = 0; i < m_targets.size(); ++i) list.push_back(i);
    std::string previous;
    std::string current = " # ";
    while (previous != current && m_passes <= m_targets.size() + 2) {
      list = Pass(list);
      previous = current;
      current.clear();
      for (const std::uint32_t project : list) current += std::to_string(project + 1) + " # ";
      ++m_passes;
    }
    return {list, m_passes <= m_targets.size() + 2};
  }
  std::size_t Passes() const { return m_passes; }

 private:
  std::vector<std::uint32_t> Pass(const std::vector<std::uint32_t>& list) const {
    std::vector<std::uint32_t> next;
    std::set<std::uint32_t> keys;
    const auto append = [&](std::uint32_t project) {
      if (keys.insert(project).second) next.push_back(project);
    };
    for (const std::uint32_t project : list) {
      for (const std::uint32_t target : m_targets[project]) append(target);
      append(project);
    }
    return next;
  }

  const Targets& m_targets;
  std::size_t m_passes = 0;
};

using Order = std::vector<std::uint32_t>;

// From 0 up to, and without, the bound.
std::uint32_t Pick(std::mt19937& random, std::uint32_t bound) {
  return static_cast<std::uint32_t>(random() % bound);
}

TEST(CompileOrder, AnEmptyListIsSettled) {
  const CompileOrder result = SettleCompileOrder(ReferenceGraph{});
  EXPECT_TRUE(result.order.empty());
  EXPECT_TRUE(result.isSettled);
}

TEST(CompileOrder, AListWithoutReferencesKeepsItsOrder) {
  const CompileOrder result = SettleCompileOrder(GraphOf({{}, {}, {}}));
  EXPECT_EQ(result.order, (Order{0, 1, 2}));
  EXPECT_TRUE(result.isSettled);
}

TEST(CompileOrder, AChainIsTurnedRound) {
  const CompileOrder result = SettleCompileOrder(GraphOf({{1}, {2}, {}}));
  EXPECT_EQ(result.order, (Order{2, 1, 0}));
  EXPECT_TRUE(result.isSettled);
}

TEST(CompileOrder, AnOrderThatFitsStays) {
  EXPECT_EQ(SettleCompileOrder(GraphOf({{}, {0}, {0, 1}})).order, (Order{0, 1, 2}));
}

TEST(CompileOrder, ReferencesComeInTheirOwnOrder) {
  EXPECT_EQ(SettleCompileOrder(GraphOf({{2, 1}, {}, {}})).order, (Order{2, 1, 0}));
}

TEST(CompileOrder, AReferenceNamedTwiceCountsOnce) {
  EXPECT_EQ(SettleCompileOrder(GraphOf({{1, 1}, {}})).order, (Order{1, 0}));
}

TEST(CompileOrder, TwoProjectsThatReferenceEachOtherNeverSettle) {
  const CompileOrder result = SettleCompileOrder(GraphOf({{1}, {0}}));
  EXPECT_FALSE(result.isSettled);
  EXPECT_EQ(result.order, (Order{1, 0})) << "as the fifth pass leaves them";
}

TEST(CompileOrder, ACycleAmongOthersIsFoundToo) {
  EXPECT_FALSE(SettleCompileOrder(GraphOf({{}, {2, 0}, {3}, {1}, {0}})).isSettled);
}

TEST(CompileOrder, AProjectThatReferencesItselfSettles) {
  const CompileOrder result = SettleCompileOrder(GraphOf({{0}, {1}}));
  EXPECT_TRUE(result.isSettled);
  EXPECT_EQ(result.order, (Order{0, 1}));
}

TEST(CompileOrder, IsThatOfTheLiteralPassesOnEverySmallGraph) {
  // Every graph of three projects, references to itself included, in one listing of each row.
  for (std::uint32_t bits = 0; bits < 1U << 9; ++bits) {
    Targets targets(3);
    for (std::uint32_t edge = 0; edge < 9; ++edge) {
      if ((bits >> edge & 1) != 0) targets[edge / 3].push_back(edge % 3);
    }
    const CompileOrder expected = LiteralPasses(targets).Settle();
    const CompileOrder result = SettleCompileOrder(GraphOf(targets));
    ASSERT_EQ(result.order, expected.order) << bits;
    ASSERT_EQ(result.isSettled, expected.isSettled) << bits;
  }
}

TEST(CompileOrder, IsThatOfTheLiteralPassesOnRandomGraphs) {
  std::mt19937 random(20010324);
  int cyclic = 0;
  for (int round = 0; round < 6000; ++round) {
    const std::uint32_t count = 2 + Pick(random, 24);
    const bool isAcyclic = Pick(random, 2) == 0;
    // From few references to many: sparse graphs have long cycles, dense ones short ones.
    const std::uint32_t density = 1 + Pick(random, 40);
    Order rank(count);
    for (std::uint32_t i = 0; i < count; ++i) rank[i] = Pick(random, 1000);
    Targets targets(count);
    for (std::uint32_t from = 0; from < count; ++from) {
      for (std::uint32_t to = 0; to < count; ++to) {
        if (Pick(random, 100) >= density || (isAcyclic && rank[from] <= rank[to])) continue;
        targets[from].push_back(to);
      }
      std::shuffle(targets[from].begin(), targets[from].end(), random);
    }
    const CompileOrder expected = LiteralPasses(targets).Settle();
    const CompileOrder result = SettleCompileOrder(GraphOf(targets));
    ASSERT_EQ(result.order, expected.order) << "round " << round;
    ASSERT_EQ(result.isSettled, expected.isSettled) << "round " << round;
    ASSERT_TRUE(result.isSettled || !isAcyclic) << "round " << round;
    if (!result.isSettled) ++cyclic;
  }
  EXPECT_GT(cyclic, 500) << "the graphs are meant to be of both kinds";
}

TEST(CompileOrder, IsThatOfTheLiteralPassesOnRings) {
  for (std::uint32_t length = 2; length < 40; ++length) {
    Targets targets(length + 3);
    for (std::uint32_t i = 0; i < length; ++i) targets[i].push_back((i + 1) % length);
    targets[length].push_back(length / 2);
    const CompileOrder expected = LiteralPasses(targets).Settle();
    const CompileOrder result = SettleCompileOrder(GraphOf(targets));
    ASSERT_EQ(result.order, expected.order) << length;
    ASSERT_FALSE(result.isSettled) << length;
  }
}

TEST(CompileOrder, PutsEveryProjectBehindThoseItReferences) {
  std::mt19937 random(7);
  constexpr std::uint32_t kCount = 3500;
  Targets targets(kCount);
  for (std::uint32_t from = 0; from + 1 < kCount; ++from) {
    for (int i = 0; i < 4; ++i) targets[from].push_back(from + 1 + Pick(random, kCount - from - 1));
  }
  const CompileOrder result = SettleCompileOrder(GraphOf(targets));
  ASSERT_TRUE(result.isSettled);
  Order place(kCount);
  for (std::uint32_t i = 0; i < kCount; ++i) place[result.order[i]] = i;
  for (std::uint32_t from = 0; from < kCount; ++from) {
    for (const std::uint32_t to : targets[from]) ASSERT_LT(place[to], place[from]);
  }
}

TEST(CompileOrder, AChainOfTenThousandInTheWorstListingSettles) {
  constexpr std::uint32_t kCount = 10000;
  Targets targets(kCount);
  for (std::uint32_t i = 0; i + 1 < kCount; ++i) targets[i].push_back(i + 1);
  const CompileOrder result = SettleCompileOrder(GraphOf(targets));
  EXPECT_TRUE(result.isSettled);
  EXPECT_EQ(result.order.front(), kCount - 1);
  EXPECT_EQ(result.order.back(), 0U);
}

TEST(CompileOrder, ARingOfTenThousandIsFoundOut) {
  constexpr std::uint32_t kCount = 10000;
  Targets targets(kCount);
  for (std::uint32_t i = 0; i < kCount; ++i) targets[i].push_back((i + 1) % kCount);
  EXPECT_FALSE(SettleCompileOrder(GraphOf(targets)).isSettled);
}

TEST(CompileOrder, TheLiteralPassesMakeTwoWhereNothingMoves) {
  const Targets none;
  LiteralPasses empty(none);
  EXPECT_TRUE(empty.Settle().isSettled);
  EXPECT_EQ(empty.Passes(), 2U);
  const Targets three(3);
  LiteralPasses settled(three);
  EXPECT_TRUE(settled.Settle().isSettled);
  EXPECT_EQ(settled.Passes(), 2U);
}

}  // namespace
}  // namespace hearthmake
