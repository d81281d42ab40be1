#include "host/graph/Digraph.hpp"

#include <algorithm>
#include <cstdint>

namespace hearthmake::host {

namespace {

constexpr std::size_t kNone = static_cast<std::size_t>(-1);

// Tarjan's walk with a stack of its own.
class ComponentWalk {
 public:
  explicit ComponentWalk(const Digraph& graph)
      : m_graph(graph),
        m_found(graph.Size(), kNone),
        m_lowest(graph.Size(), kNone),
        m_component(graph.Size(), kNone) {
    for (std::size_t node = 0; node < graph.Size(); ++node) {
      if (m_found[node] == kNone) WalkFrom(node);
    }
  }
  Digraph::Nodes Take() { return std::move(m_component); }

 private:
  struct Step {
    std::size_t node;
    std::size_t nextTarget;
  };

  void Enter(std::size_t node) {
    m_found[node] = m_lowest[node] = m_count++;
    m_open.push_back(node);
    m_path.push_back({node, 0});
  }

  void WalkFrom(std::size_t start) {
    Enter(start);
    while (!m_path.empty()) {
      Step& step = m_path.back();
      const std::size_t node = step.node;
      if (step.nextTarget == m_graph.Targets(node).size()) {
        Leave(node);
        continue;
      }
      const std::size_t target = m_graph.Targets(node)[step.nextTarget++];
      if (m_found[target] == kNone) {
        Enter(target);
      } else if (m_component[target] == kNone) {
        m_lowest[node] = std::min(m_lowest[node], m_found[target]);
      }
    }
  }

  void Leave(std::size_t node) {
    m_path.pop_back();
    if (!m_path.empty()) {
      const std::size_t above = m_path.back().node;
      m_lowest[above] = std::min(m_lowest[above], m_lowest[node]);
    }
    if (m_lowest[node] != m_found[node]) return;
    for (std::size_t member = kNone; member != node;) {
      member = m_open.back();
      m_open.pop_back();
      m_component[member] = m_components;
    }
    ++m_components;
  }

  const Digraph& m_graph;
  Digraph::Nodes m_found;
  Digraph::Nodes m_lowest;
  Digraph::Nodes m_component;
  Digraph::Nodes m_open;
  std::vector<Step> m_path;
  std::size_t m_count = 0;
  std::size_t m_components = 0;
};

// Sets of nodes as rows of bits.
class BitRows {
 public:
  explicit BitRows(std::size_t size) : m_words((size + 63) / 64), m_bits(m_words * size) {}

  bool Has(std::size_t row, std::size_t bit) const {
    return ((m_bits[row * m_words + bit / 64] >> (bit % 64)) & 1U) != 0;
  }
  void Add(std::size_t row, std::size_t bit) {
    m_bits[row * m_words + bit / 64] |= std::uint64_t{1} << (bit % 64);
  }
  void AddAll(std::size_t row, std::size_t otherRow) {
    for (std::size_t word = 0; word < m_words; ++word)
      m_bits[row * m_words + word] |= m_bits[otherRow * m_words + word];
  }

 private:
  std::size_t m_words;
  std::vector<std::uint64_t> m_bits;
};

// The graph of the components, without cycles.
std::vector<Digraph::Nodes> Condensed(const Digraph& graph, const Digraph::Nodes& components) {
  std::vector<Digraph::Nodes> targets;
  for (std::size_t node = 0; node < graph.Size(); ++node) {
    targets.resize(std::max(targets.size(), components[node] + 1));
    for (const std::size_t target : graph.Targets(node)) {
      if (components[target] != components[node]) targets[components[node]].push_back(components[target]);
    }
  }
  return targets;
}

}  // namespace

Digraph::Digraph(std::vector<Nodes> targets) : m_targets(std::move(targets)) {
  for (Nodes& own : m_targets) {
    std::sort(own.begin(), own.end());
    own.erase(std::unique(own.begin(), own.end()), own.end());
    own.erase(std::lower_bound(own.begin(), own.end(), m_targets.size()), own.end());
  }
}

std::size_t Digraph::EdgeCount() const {
  std::size_t count = 0;
  for (const Nodes& own : m_targets) count += own.size();
  return count;
}

bool Digraph::PointsTo(std::size_t from, std::size_t to) const {
  return std::binary_search(m_targets[from].begin(), m_targets[from].end(), to);
}

Digraph::Nodes Digraph::Components() const { return ComponentWalk(*this).Take(); }

std::vector<std::vector<bool>> Digraph::CyclicEdges() const {
  const Nodes components = Components();
  std::vector<std::vector<bool>> cyclic(Size());
  for (std::size_t node = 0; node < Size(); ++node) {
    for (const std::size_t target : m_targets[node])
      cyclic[node].push_back(components[node] == components[target]);
  }
  return cyclic;
}

Digraph Digraph::Reduced() const {
  const Nodes components = Components();
  const Digraph condensed(Condensed(*this, components));
  // Components are numbered targets first, so that those below are complete when one is reached; and of
  // its targets the highest come first, since only they can imply the others.
  BitRows reached(condensed.Size());
  BitRows kept(condensed.Size());
  for (std::size_t component = 0; component < condensed.Size(); ++component) {
    const Nodes& targets = condensed.Targets(component);
    for (auto target = targets.rbegin(); target != targets.rend(); ++target) {
      if (reached.Has(component, *target)) continue;
      kept.Add(component, *target);
      reached.Add(component, *target);
      reached.AddAll(component, *target);
    }
  }
  std::vector<Nodes> targets(Size());
  for (std::size_t node = 0; node < Size(); ++node) {
    for (const std::size_t target : m_targets[node]) {
      const bool isCyclic = components[node] == components[target];
      if (isCyclic || kept.Has(components[node], components[target])) targets[node].push_back(target);
    }
  }
  return Digraph(std::move(targets));
}

Digraph Digraph::Reversed() const {
  std::vector<Nodes> targets(Size());
  for (std::size_t node = 0; node < Size(); ++node) {
    for (const std::size_t target : m_targets[node]) targets[target].push_back(node);
  }
  return Digraph(std::move(targets));
}

Digraph::Nodes Digraph::ReachableFrom(const Nodes& starts) const {
  std::vector<bool> isReached(Size());
  Nodes reached;
  const auto add = [&](std::size_t node) {
    if (isReached[node]) return;
    isReached[node] = true;
    reached.push_back(node);
  };
  for (const std::size_t start : starts) add(start);
  for (std::size_t next = 0; next < reached.size(); ++next) {
    for (const std::size_t target : m_targets[reached[next]]) add(target);
  }
  std::sort(reached.begin(), reached.end());
  return reached;
}

Digraph Digraph::Part(const Nodes& nodes) const {
  Nodes numbers(Size(), kNone);
  for (std::size_t i = 0; i < nodes.size(); ++i) numbers[nodes[i]] = i;
  std::vector<Nodes> targets(nodes.size());
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    for (const std::size_t target : m_targets[nodes[i]]) {
      if (numbers[target] != kNone) targets[i].push_back(numbers[target]);
    }
  }
  return Digraph(std::move(targets));
}

}  // namespace hearthmake::host
