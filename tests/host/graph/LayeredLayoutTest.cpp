#include "host/graph/LayeredLayout.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>

namespace hearthmake::host {
namespace {

std::vector<double> Widths(std::size_t count) {
  std::vector<double> widths;
  for (std::size_t i = 0; i < count; ++i) widths.push_back(60 + static_cast<double>(i * 37 % 90));
  return widths;
}

Drawing Draw(const Digraph& graph) { return LayOut(graph, Widths(graph.Size())); }

// A suite: each of so many projects references some before it.
Digraph Suite(std::size_t count) {
  std::vector<Digraph::Nodes> targets(count);
  for (std::size_t i = 0; i < count; ++i) {
    for (const std::size_t distance : {1, 5, 17, 60})
      if (i >= distance && (i * 31 + distance) % 3 != 0) targets[i].push_back(i - distance);
  }
  return Digraph(std::move(targets));
}

bool Overlap(const DrawnNode& a, const DrawnNode& b) {
  return a.left < b.left + b.width && b.left < a.left + a.width && a.top < b.top + Drawing::kNodeHeight &&
         b.top < a.top + Drawing::kNodeHeight;
}

void ExpectNoOverlap(const Drawing& drawing) {
  for (std::size_t a = 0; a < drawing.nodes.size(); ++a) {
    for (std::size_t b = 0; b < a; ++b) {
      EXPECT_FALSE(Overlap(drawing.nodes[a], drawing.nodes[b])) << a << " and " << b;
    }
  }
}

void ExpectInside(const Drawing& drawing) {
  for (const DrawnNode& node : drawing.nodes) {
    EXPECT_GE(node.left, 0);
    EXPECT_GE(node.top, 0);
    EXPECT_LE(node.left + node.width, drawing.width);
    EXPECT_LE(node.top + Drawing::kNodeHeight, drawing.height);
  }
  for (const DrawnEdge& edge : drawing.edges) {
    for (const DrawnPoint& point : edge.points) {
      EXPECT_GE(point.x, 0);
      EXPECT_LE(point.x, drawing.width);
      EXPECT_GE(point.y, 0);
      EXPECT_LE(point.y, drawing.height);
    }
  }
}

TEST(LayeredLayout, PutsEachNodeRightOfThoseThatItPointsTo) {
  const Digraph graph = Suite(120);
  const Drawing drawing = Draw(graph);
  for (const DrawnEdge& edge : drawing.edges) {
    const DrawnNode& target = drawing.nodes[edge.to];
    EXPECT_GT(drawing.nodes[edge.from].left, target.left + target.width) << edge.from << " to " << edge.to;
    EXPECT_FALSE(edge.isCyclic);
  }
  EXPECT_EQ(drawing.edges.size(), graph.EdgeCount());
}

TEST(LayeredLayout, LeadsEachLineFromNodeToNode) {
  const Drawing drawing = Draw(Suite(60));
  for (const DrawnEdge& edge : drawing.edges) {
    const DrawnNode& from = drawing.nodes[edge.from];
    const DrawnNode& to = drawing.nodes[edge.to];
    EXPECT_EQ(edge.points.front().x, from.left);
    EXPECT_EQ(edge.points.front().y, from.top + Drawing::kNodeHeight / 2);
    EXPECT_EQ(edge.points.back().x, to.left + to.width);
    EXPECT_EQ(edge.points.back().y, to.top + Drawing::kNodeHeight / 2);
  }
}

TEST(LayeredLayout, KeepsNodesApartAndInsideTheDrawing) {
  const Drawing drawing = Draw(Suite(150));
  ExpectNoOverlap(drawing);
  ExpectInside(drawing);
}

TEST(LayeredLayout, LeadsLongLinesPastTheNodesBetween) {
  // 0 <- 1 <- 2, and 2 to 0 past 1.
  const Drawing drawing = Draw(Digraph({{}, {0}, {0, 1}}));
  const DrawnNode& between = drawing.nodes[1];
  for (const DrawnEdge& edge : drawing.edges) {
    if (edge.from != 2 || edge.to != 0) continue;
    ASSERT_EQ(edge.points.size(), 4U);
    EXPECT_EQ(edge.points[1].y, edge.points[2].y);
    const double y = edge.points[1].y;
    EXPECT_TRUE(y < between.top || y > between.top + Drawing::kNodeHeight) << y;
  }
}

TEST(LayeredLayout, UntanglesWhatNeedNotCross) {
  // Two pairs, listed crosswise: no line may cross the other.
  const Drawing drawing = Draw(Digraph({{}, {}, {1}, {0}}));
  const bool isUpper = drawing.nodes[0].top < drawing.nodes[1].top;
  EXPECT_EQ(drawing.nodes[3].top < drawing.nodes[2].top, isUpper);
}

TEST(LayeredLayout, DrawsCyclesAndMarksThem) {
  const Drawing drawing = Draw(Digraph({{1}, {2}, {0}, {2}, {4}}));
  ASSERT_EQ(drawing.edges.size(), 4U);  // the one from a node to itself is left out
  std::size_t cyclic = 0;
  for (const DrawnEdge& edge : drawing.edges) cyclic += edge.isCyclic ? 1 : 0;
  EXPECT_EQ(cyclic, 3U);
  ExpectNoOverlap(drawing);
  ExpectInside(drawing);
}

TEST(LayeredLayout, DrawsAGraphInWhichAllPointToAll) {
  std::vector<Digraph::Nodes> targets(40);
  for (auto& own : targets) {
    for (std::size_t to = 0; to < targets.size(); ++to) own.push_back(to);
  }
  const Drawing drawing = Draw(Digraph(std::move(targets)));
  EXPECT_EQ(drawing.edges.size(), 40U * 39U);
  ExpectNoOverlap(drawing);
}

TEST(LayeredLayout, PutsNodesWithoutEdgesInRowsBelow) {
  std::vector<Digraph::Nodes> targets(52);
  targets[1] = {0};
  const Drawing drawing = Draw(Digraph(std::move(targets)));
  ExpectNoOverlap(drawing);
  ExpectInside(drawing);
  for (std::size_t node = 2; node < 52; ++node) EXPECT_GT(drawing.nodes[node].top, drawing.nodes[0].top);
  EXPECT_LT(drawing.width, 1200);
}

TEST(LayeredLayout, DrawsNothingOfNothing) {
  const Drawing drawing = Draw(Digraph(std::vector<Digraph::Nodes>{}));
  EXPECT_TRUE(drawing.nodes.empty());
  EXPECT_TRUE(drawing.edges.empty());
}

TEST(LayeredLayout, DrawsTheSameGraphTheSameWay) {
  const Drawing a = Draw(Suite(200));
  const Drawing b = Draw(Suite(200));
  ASSERT_EQ(a.nodes.size(), b.nodes.size());
  for (std::size_t i = 0; i < a.nodes.size(); ++i) {
    EXPECT_EQ(a.nodes[i].left, b.nodes[i].left);
    EXPECT_EQ(a.nodes[i].top, b.nodes[i].top);
  }
}

// Ample, for slow machines and sanitizers: what is to be seen is growth that has no end.
TEST(LayeredLayout, DrawsALargeSuiteQuickly) {
  const auto start = std::chrono::steady_clock::now();
  const Drawing drawing = Draw(Suite(350));
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
  EXPECT_EQ(drawing.nodes.size(), 350U);
  std::vector<Digraph::Nodes> chain(2000);
  for (std::size_t i = 1; i < chain.size(); ++i) chain[i] = {i - 1, 0};
  EXPECT_EQ(Draw(Digraph(std::move(chain))).nodes.size(), 2000U);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
}

}  // namespace
}  // namespace hearthmake::host
