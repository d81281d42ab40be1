#include "host/graph/LayeredLayout.hpp"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

namespace hearthmake::host {

namespace {

constexpr std::size_t kNone = static_cast<std::size_t>(-1);
constexpr double kRowGap = 12;
constexpr double kBendHeight = 4;
constexpr double kBendGap = 7;
constexpr double kColumnGap = 56;
constexpr double kWidestGap = 150;
constexpr double kGapForEdge = 1.6;
constexpr double kMargin = 12;
constexpr double kLonelyGap = 16;
constexpr double kLeastLonelyWidth = 900;
constexpr int kOrderSweeps = 24;
constexpr int kPlaceSweeps = 12;
// With more, long edges go straight: a drawing of that kind is a thicket anyway, but it must not take long.
constexpr std::size_t kMostBends = 20'000;

// The edges that a walk in depth finds to lead back to where it is.
class BackEdges {
 public:
  explicit BackEdges(const Digraph& graph) : m_graph(graph), m_states(graph.Size(), State::New) {
    for (std::size_t node = 0; node < graph.Size(); ++node) WalkFrom(node);
    std::sort(m_found.begin(), m_found.end());
  }
  bool Has(std::size_t from, std::size_t to) const {
    return std::binary_search(m_found.begin(), m_found.end(), std::pair(from, to));
  }

 private:
  enum class State : unsigned char { New, Open, Left };

  void WalkFrom(std::size_t start) {
    if (m_states[start] != State::New) return;
    std::vector<std::pair<std::size_t, std::size_t>> path{{start, 0}};  // with the next target
    m_states[start] = State::Open;
    while (!path.empty()) {
      const std::size_t node = path.back().first;
      if (path.back().second == m_graph.Targets(node).size()) {
        m_states[node] = State::Left;
        path.pop_back();
        continue;
      }
      const std::size_t target = m_graph.Targets(node)[path.back().second++];
      if (m_states[target] == State::Open) m_found.emplace_back(node, target);
      if (m_states[target] != State::New) continue;
      m_states[target] = State::Open;
      path.emplace_back(target, 0);
    }
  }

  const Digraph& m_graph;
  std::vector<State> m_states;
  std::vector<std::pair<std::size_t, std::size_t>> m_found;
};

// The graph with the edges that close cycles turned round.
Digraph WithoutCycles(const Digraph& graph) {
  const BackEdges back(graph);
  std::vector<Digraph::Nodes> targets(graph.Size());
  for (std::size_t from = 0; from < graph.Size(); ++from) {
    for (const std::size_t to : graph.Targets(from)) {
      if (from == to) continue;
      if (back.Has(from, to)) {
        targets[to].push_back(from);
      } else {
        targets[from].push_back(to);
      }
    }
  }
  return Digraph(std::move(targets));
}

// Takes out the columns that nobody stands in any more.
void CloseUp(const Digraph& graph, const Digraph& users, std::vector<std::size_t>& columns) {
  std::vector<std::size_t> numbers(graph.Size(), 0);
  for (std::size_t node = 0; node < graph.Size(); ++node) {
    const bool isJoined = !graph.Targets(node).empty() || !users.Targets(node).empty();
    if (isJoined) numbers[columns[node]] = 1;
  }
  std::exclusive_scan(numbers.begin(), numbers.end(), numbers.begin(), std::size_t{0});
  for (std::size_t& column : columns) column = numbers[column];
}

// Each node one column right of the last that it points to; then those whom more point to than they point to
// move right, next to the first of these, which shortens the lines.
std::vector<std::size_t> ColumnsOf(const Digraph& graph) {
  const Digraph::Nodes components = graph.Components();  // without cycles: an order, targets first
  std::vector<std::size_t> order(graph.Size());
  for (std::size_t node = 0; node < graph.Size(); ++node) order[components[node]] = node;
  std::vector<std::size_t> columns(graph.Size(), 0);
  for (const std::size_t node : order) {
    for (const std::size_t target : graph.Targets(node))
      columns[node] = std::max(columns[node], columns[target] + 1);
  }
  const Digraph users = graph.Reversed();
  for (auto node = order.rbegin(); node != order.rend(); ++node) {
    if (users.Targets(*node).size() <= graph.Targets(*node).size()) continue;
    std::size_t first = kNone;
    for (const std::size_t user : users.Targets(*node)) first = std::min(first, columns[user]);
    columns[*node] = first - 1;
  }
  CloseUp(graph, users, columns);
  return columns;
}

// The nodes in columns, with a bend in each column that an edge passes. Cells are nodes, then bends.
class Columns {
 public:
  Columns(const Digraph& graph, const std::vector<std::size_t>& columnOf, const std::vector<bool>& isLonely)
      : m_nodes(graph.Size()), m_left(graph.Size()), m_right(graph.Size()), m_columnOf(columnOf) {
    for (std::size_t node = 0; node < graph.Size(); ++node) {
      if (!isLonely[node]) Put(node, columnOf[node]);
    }
    std::size_t bends = 0;
    for (std::size_t from = 0; from < graph.Size(); ++from) {
      for (const std::size_t to : graph.Targets(from)) bends += columnOf[from] - columnOf[to] - 1;
    }
    const bool isBent = bends <= kMostBends;
    for (std::size_t from = 0; from < graph.Size(); ++from) {
      for (const std::size_t to : graph.Targets(from)) AddEdge(from, to, isBent);
    }
    Index();
  }

  bool IsBend(std::size_t cell) const { return cell >= m_nodes; }
  std::size_t Cells() const { return m_left.size(); }
  std::size_t ColumnOf(std::size_t cell) const { return m_columnOf[cell]; }
  const std::vector<std::vector<std::size_t>>& Order() const { return m_order; }
  // Of a cell, in the column beside it.
  const std::vector<std::size_t>& Left(std::size_t cell) const { return m_left[cell]; }
  const std::vector<std::size_t>& Right(std::size_t cell) const { return m_right[cell]; }
  // What an edge passes, from its right end to its left end, both left out.
  const std::vector<std::size_t>& Bends(std::size_t from, std::size_t to) const {
    const auto at = std::lower_bound(m_routes.begin(), m_routes.end(), std::pair(from, to),
                                     [](const Route& r, const auto& key) { return r.ends < key; });
    return at->bends;
  }

  // Sorts each column by the middle of its neighbours, to and fro, and keeps the order with fewest crossings.
  void Untangle() {
    auto best = m_order;
    std::size_t fewest = Crossings();
    for (int sweep = 0; sweep < kOrderSweeps && fewest > 0; ++sweep) {
      Sweep(sweep % 2 == 0);
      const std::size_t crossings = Crossings();
      if (crossings >= fewest) continue;
      fewest = crossings;
      best = m_order;
    }
    m_order = std::move(best);
    Index();
  }

 private:
  struct Route {
    std::pair<std::size_t, std::size_t> ends;
    std::vector<std::size_t> bends;
  };

  void Put(std::size_t cell, std::size_t column) {
    if (m_order.size() <= column) m_order.resize(column + 1);
    m_order[column].push_back(cell);
  }

  void AddEdge(std::size_t from, std::size_t to, bool isBent) {
    Route route{{from, to}, {}};
    std::size_t last = from;
    for (std::size_t column = m_columnOf[from] - 1; isBent && column > m_columnOf[to]; --column) {
      const std::size_t bend = m_left.size();
      m_left.emplace_back();
      m_right.emplace_back();
      m_columnOf.push_back(column);
      Put(bend, column);
      Join(bend, last);
      route.bends.push_back(bend);
      last = bend;
    }
    if (m_columnOf[last] == m_columnOf[to] + 1) Join(to, last);
    m_routes.push_back(std::move(route));
  }

  void Join(std::size_t left, std::size_t right) {
    m_right[left].push_back(right);
    m_left[right].push_back(left);
  }

  void Index() {
    m_place.resize(Cells());
    for (const auto& column : m_order) {
      for (std::size_t i = 0; i < column.size(); ++i) m_place[column[i]] = i;
    }
  }

  void Sweep(bool isRightwards) {
    const std::size_t count = m_order.size();
    for (std::size_t i = 0; i < count; ++i) {
      SortByNeighbours(m_order[isRightwards ? i : count - 1 - i], isRightwards);
      Index();
    }
  }

  void SortByNeighbours(std::vector<std::size_t>& column, bool byLeft) {
    std::vector<std::pair<double, std::size_t>> keyed;
    for (const std::size_t cell : column) {
      const auto& neighbours = byLeft ? m_left[cell] : m_right[cell];
      double sum = 0;
      for (const std::size_t neighbour : neighbours) sum += static_cast<double>(m_place[neighbour]);
      const double key = neighbours.empty() ? static_cast<double>(m_place[cell])
                                            : sum / static_cast<double>(neighbours.size());
      keyed.emplace_back(key, cell);
    }
    std::stable_sort(keyed.begin(), keyed.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    for (std::size_t i = 0; i < column.size(); ++i) column[i] = keyed[i].second;
  }

  std::size_t Crossings() const {
    std::size_t crossings = 0;
    for (std::size_t column = 1; column < m_order.size(); ++column) crossings += CrossingsBefore(column);
    return crossings;
  }

  // Counts pairs of edges in the wrong order with a tree of sums (Fenwick's) over the left column.
  std::size_t CrossingsBefore(std::size_t column) const {
    std::vector<std::size_t> sums(m_order[column - 1].size() + 1, 0);
    std::size_t crossings = 0;
    std::size_t seen = 0;
    for (const std::size_t cell : m_order[column]) {
      for (const std::size_t left : m_left[cell]) {
        std::size_t above = 0;
        for (std::size_t i = m_place[left] + 1; i > 0; i &= i - 1) above += sums[i];
        crossings += seen - above;
      }
      for (const std::size_t left : m_left[cell]) {
        for (std::size_t i = m_place[left] + 1; i < sums.size(); i += i & (~i + 1)) ++sums[i];
        ++seen;
      }
    }
    return crossings;
  }

  std::size_t m_nodes;
  std::vector<std::vector<std::size_t>> m_left;
  std::vector<std::vector<std::size_t>> m_right;
  std::vector<std::size_t> m_columnOf;
  std::vector<std::vector<std::size_t>> m_order;
  std::vector<std::size_t> m_place;  // in its column
  std::vector<Route> m_routes;       // ascending by their ends
};

// The heights of the cells' middles: near their neighbours, in order, and never too close.
class Heights {
 public:
  explicit Heights(const Columns& columns) : m_columns(columns), m_middle(columns.Cells(), 0) {
    for (const auto& column : columns.Order()) Stack(column);
    for (int sweep = 0; sweep < kPlaceSweeps; ++sweep) {
      const bool isRightwards = sweep % 2 == 0;
      const bool byBoth = sweep + 2 >= kPlaceSweeps;
      for (std::size_t i = 0; i < columns.Order().size(); ++i) {
        Place(columns.Order()[isRightwards ? i : columns.Order().size() - 1 - i], isRightwards || byBoth,
              !isRightwards || byBoth);
      }
    }
  }
  double Middle(std::size_t cell) const { return m_middle[cell]; }

 private:
  double HeightOf(std::size_t cell) const {
    return m_columns.IsBend(cell) ? kBendHeight : Drawing::kNodeHeight;
  }
  double Distance(std::size_t upper, std::size_t lower) const {
    const bool isBend = m_columns.IsBend(upper) || m_columns.IsBend(lower);
    return (HeightOf(upper) + HeightOf(lower)) / 2 + (isBend ? kBendGap : kRowGap);
  }

  void Stack(const std::vector<std::size_t>& column) {
    for (std::size_t i = 1; i < column.size(); ++i)
      m_middle[column[i]] = m_middle[column[i - 1]] + Distance(column[i - 1], column[i]);
    if (column.empty()) return;
    const double half = m_middle[column.back()] / 2;
    for (const std::size_t cell : column) m_middle[cell] -= half;
  }

  // Straight lines matter most where they are long.
  double WeightOf(std::size_t a, std::size_t b) const {
    const int bends = (m_columns.IsBend(a) ? 1 : 0) + (m_columns.IsBend(b) ? 1 : 0);
    return bends == 2 ? 8 : bends == 1 ? 2 : 1;
  }

  struct Wish {
    double middle;
    double weight;
  };
  Wish WishOf(std::size_t cell, bool byLeft, bool byRight) const {
    double sum = 0;
    double weight = 0;
    const auto add = [&](const std::vector<std::size_t>& neighbours) {
      for (const std::size_t neighbour : neighbours) {
        const double w = WeightOf(cell, neighbour);
        sum += w * m_middle[neighbour];
        weight += w;
      }
    };
    if (byLeft) add(m_columns.Left(cell));
    if (byRight) add(m_columns.Right(cell));
    constexpr double kStay = 0.2;
    return weight > 0 ? Wish{sum / weight, weight} : Wish{m_middle[cell], kStay};
  }

  // The places closest to the wishes, by least squares, among those that keep order and distances: with the
  // distances taken off, neighbours that wish to be in the wrong order share their mean.
  void Place(const std::vector<std::size_t>& column, bool byLeft, bool byRight) {
    struct Block {
      double mean;
      double weight;
      std::size_t count;
    };
    std::vector<Block> blocks;
    double offset = 0;
    for (std::size_t i = 0; i < column.size(); ++i) {
      if (i > 0) offset += Distance(column[i - 1], column[i]);
      const Wish wish = WishOf(column[i], byLeft, byRight);
      blocks.push_back({wish.middle - offset, wish.weight, 1});
      while (blocks.size() > 1 && blocks[blocks.size() - 2].mean > blocks.back().mean) {
        const Block last = blocks.back();
        blocks.pop_back();
        Block& into = blocks.back();
        into.mean = (into.mean * into.weight + last.mean * last.weight) / (into.weight + last.weight);
        into.weight += last.weight;
        into.count += last.count;
      }
    }
    std::size_t next = 0;
    offset = 0;
    for (const Block& block : blocks) {
      for (std::size_t i = 0; i < block.count; ++i, ++next) {
        if (next > 0) offset += Distance(column[next - 1], column[next]);
        m_middle[column[next]] = block.mean + offset;
      }
    }
  }

  const Columns& m_columns;
  std::vector<double> m_middle;
};

// Whole pixels keep the text of the drawing short and its lines sharp.
double Pixel(double value) { return std::round(value); }

class Drafting {
 public:
  Drafting(const Digraph& graph, const std::vector<double>& widths)
      : m_graph(graph),
        m_widths(widths),
        m_acyclic(WithoutCycles(graph)),
        m_columnOf(ColumnsOf(m_acyclic)),
        m_columns(MakeColumns()) {
    m_drawing.nodes.resize(graph.Size());
    PlaceColumns();
    PlaceNodes();
    DrawEdges();
    PlaceLonely();
    m_drawing.width += kMargin;
    m_drawing.height += kMargin;
  }
  Drawing Take() { return std::move(m_drawing); }

 private:
  Columns MakeColumns() {
    m_isLonely.assign(m_graph.Size(), true);
    for (std::size_t from = 0; from < m_graph.Size(); ++from) {
      for (const std::size_t to : m_acyclic.Targets(from)) m_isLonely[from] = m_isLonely[to] = false;
    }
    Columns columns(m_acyclic, m_columnOf, m_isLonely);
    columns.Untangle();
    return columns;
  }

  // A gap has room for the curves in it.
  double GapBefore(std::size_t column) const {
    std::size_t edges = 0;
    for (const std::size_t cell : m_columns.Order()[column]) edges += m_columns.Left(cell).size();
    return std::min(kWidestGap, kColumnGap + kGapForEdge * static_cast<double>(edges));
  }

  void PlaceColumns() {
    double x = kMargin;
    for (std::size_t column = 0; column < m_columns.Order().size(); ++column) {
      if (column > 0) x += GapBefore(column);
      double width = 0;
      for (const std::size_t cell : m_columns.Order()[column]) {
        if (!m_columns.IsBend(cell)) width = std::max(width, m_widths[cell]);
      }
      m_left.push_back(Pixel(x));
      x = Pixel(x) + Pixel(width);
      m_right.push_back(x);
    }
    m_drawing.width = x;
  }

  void PlaceNodes() {
    const Heights heights(m_columns);
    double top = 0;
    for (std::size_t cell = 0; cell < m_columns.Cells(); ++cell)
      if (m_columns.IsBend(cell) || !m_isLonely[cell])
        top = std::min(top, heights.Middle(cell) - Drawing::kNodeHeight / 2);
    m_middle.resize(m_columns.Cells());
    double bottom = 0;
    for (std::size_t cell = 0; cell < m_columns.Cells(); ++cell) {
      m_middle[cell] = Pixel(heights.Middle(cell) - top + kMargin);
      if (m_columns.IsBend(cell)) {
        bottom = std::max(bottom, m_middle[cell]);
        continue;
      }
      if (m_isLonely[cell]) continue;
      const std::size_t column = m_columnOf[cell];
      m_drawing.nodes[cell] = {m_left[column], m_middle[cell] - Drawing::kNodeHeight / 2,
                               m_right[column] - m_left[column], column};
      bottom = std::max(bottom, m_middle[cell] + Drawing::kNodeHeight / 2);
    }
    m_drawing.height = bottom;
  }

  void DrawEdges() {
    const auto cyclic = m_graph.CyclicEdges();
    for (std::size_t from = 0; from < m_graph.Size(); ++from) {
      const Digraph::Nodes& targets = m_graph.Targets(from);
      for (std::size_t i = 0; i < targets.size(); ++i) {
        if (targets[i] == from) continue;
        m_drawing.edges.push_back({from, targets[i], cyclic[from][i], Line(from, targets[i])});
      }
    }
  }

  std::vector<DrawnPoint> Line(std::size_t from, std::size_t to) const {
    const bool isTurned = m_columnOf[from] < m_columnOf[to];
    const std::size_t right = isTurned ? to : from;
    const std::size_t left = isTurned ? from : to;
    std::vector<DrawnPoint> points{{m_left[m_columnOf[right]], m_middle[right]}};
    for (const std::size_t bend : m_columns.Bends(right, left)) {
      const std::size_t column = m_columns.ColumnOf(bend);
      points.push_back({m_right[column], m_middle[bend]});
      points.push_back({m_left[column], m_middle[bend]});
    }
    points.push_back({m_right[m_columnOf[left]], m_middle[left]});
    if (isTurned) std::reverse(points.begin(), points.end());
    return points;
  }

  void PlaceLonely() {
    const double most = std::max(m_drawing.width, kLeastLonelyWidth);
    const bool hasOthers = m_drawing.height > 0;
    double x = kMargin;
    double y = hasOthers ? m_drawing.height + 2 * kLonelyGap : kMargin;
    for (std::size_t node = 0; node < m_graph.Size(); ++node) {
      if (!m_isLonely[node]) continue;
      const double width = Pixel(m_widths[node]);
      if (x > kMargin && x + width > most) {
        x = kMargin;
        y += Drawing::kNodeHeight + kRowGap;
      }
      m_drawing.nodes[node] = {x, y, width, 0};
      x += width + kLonelyGap;
      m_drawing.width = std::max(m_drawing.width, x - kLonelyGap);
      m_drawing.height = y + Drawing::kNodeHeight;
    }
  }

  const Digraph& m_graph;
  const std::vector<double>& m_widths;
  Digraph m_acyclic;
  std::vector<std::size_t> m_columnOf;
  std::vector<bool> m_isLonely;
  Columns m_columns;
  std::vector<double> m_left;   // of the columns
  std::vector<double> m_right;  // of the columns
  std::vector<double> m_middle;
  Drawing m_drawing;
};

}  // namespace

Drawing LayOut(const Digraph& graph, const std::vector<double>& widths) {
  return Drafting(graph, widths).Take();
}

}  // namespace hearthmake::host
