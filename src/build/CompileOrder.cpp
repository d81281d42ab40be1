#include "build/CompileOrder.hpp"

#include <numeric>

namespace hearthmake {

namespace {

using Order = std::vector<std::uint32_t>;

// One pass over the list. placed tells by pass number which projects have their place already, so that
// nothing needs clearing between passes.
class Pass {
 public:
  explicit Pass(const ReferenceGraph& graph) : m_graph(graph), m_placed(graph.ProjectCount(), 0) {}

  void Run(const Order& from, Order& to) {
    ++m_number;
    std::uint32_t* next = to.data();
    for (const std::uint32_t project : from) {
      for (std::uint32_t i = m_graph.first[project]; i < m_graph.first[project + 1]; ++i) {
        Place(m_graph.targets[i], next);
      }
      Place(project, next);
    }
  }

 private:
  void Place(std::uint32_t project, std::uint32_t*& next) {
    if (m_placed[project] == m_number) return;
    m_placed[project] = m_number;
    *next++ = project;
  }

  const ReferenceGraph& m_graph;
  std::vector<std::uint32_t> m_placed;
  std::uint32_t m_number = 0;
};

}  // namespace

CompileOrder SettleCompileOrder(const ReferenceGraph& graph) {
  const std::size_t count = graph.ProjectCount();
  const std::size_t bound = count + 2;
  Order current(count);
  std::iota(current.begin(), current.end(), 0U);
  Order previous(count);
  // Orders that form a cycle of references repeat with a short period. Comparing each order with one kept
  // from earlier (Brent's way) finds it, and whole periods are left out: the outcome is the same.
  Order kept;
  std::size_t keptAt = 0;
  bool isPeriodKnown = false;

  Pass pass(graph);
  std::size_t passes = 0;
  // The first order to compare with is that of the first pass, not the list as it came.
  bool isSettled = false;
  while (!isSettled && passes <= bound) {
    previous.swap(current);
    pass.Run(previous, current);
    ++passes;
    isSettled = passes > 1 && current == previous;
    if (isSettled || isPeriodKnown || passes > bound) continue;
    if (!kept.empty() && current == kept) {
      const std::size_t period = passes - keptAt;
      passes += (bound - passes) / period * period;
      isPeriodKnown = true;
    } else if ((passes & (passes - 1)) == 0) {
      kept = current;
      keptAt = passes;
    }
  }
  return {std::move(current), passes <= bound};
}

}  // namespace hearthmake
