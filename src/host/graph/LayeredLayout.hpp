#pragma once

#include <cstddef>
#include <vector>

#include "host/graph/Digraph.hpp"

namespace hearthmake::host {

// Where a drawing puts things, in pixels from its upper left corner.
struct DrawnNode {
  double left = 0;
  double top = 0;
  double width = 0;
  std::size_t column = 0;
};
struct DrawnPoint {
  double x = 0;
  double y = 0;
};
// From the node that points to the one that it points to. Between the points the line is straight where they
// lie at one height, else a curve that begins and ends level.
struct DrawnEdge {
  std::size_t from = 0;
  std::size_t to = 0;
  bool isCyclic = false;
  std::vector<DrawnPoint> points;
};
struct Drawing {
  static constexpr double kNodeHeight = 26;

  double width = 0;
  double height = 0;
  std::vector<DrawnNode> nodes;
  std::vector<DrawnEdge> edges;
};

// Draws a graph in columns: each node stands right of those that it points to, as far as there is no cycle,
// and as few lines cross as some sweeps over the columns achieve. Nodes without any edge stand in rows below.
// The same graph gives the same drawing. Edges from a node to itself are left out.
Drawing LayOut(const Digraph& graph, const std::vector<double>& widths);

}  // namespace hearthmake::host
