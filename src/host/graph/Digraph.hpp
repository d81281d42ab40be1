#pragma once

#include <cstddef>
#include <vector>

namespace hearthmake::host {

// Nodes by number, each with those that it points to. Nothing here recurses: a chain may be as long as the
// graph.
class Digraph {
 public:
  using Nodes = std::vector<std::size_t>;

  // Targets beyond the last node are left out, and so are those that a node names again.
  explicit Digraph(std::vector<Nodes> targets);

  std::size_t Size() const { return m_targets.size(); }
  std::size_t EdgeCount() const;
  const Nodes& Targets(std::size_t node) const { return m_targets[node]; }
  bool PointsTo(std::size_t from, std::size_t to) const;

  // The number of each node's component: nodes that reach each other share one, and a component's number is
  // higher than those that it points to.
  Nodes Components() const;
  // Whether an edge lies on a cycle, for each node and its targets in order.
  std::vector<std::vector<bool>> CyclicEdges() const;
  // Without the edges that others imply: what reached a node still does. Edges of cycles stay.
  Digraph Reduced() const;
  Digraph Reversed() const;
  // What the nodes reach, themselves included, ascending.
  Nodes ReachableFrom(const Nodes& starts) const;
  // Only these nodes, renumbered in their order, and the edges among them.
  Digraph Part(const Nodes& nodes) const;

 private:
  std::vector<Nodes> m_targets;  // each ascending
};

}  // namespace hearthmake::host
