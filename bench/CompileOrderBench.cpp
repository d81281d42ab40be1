// The compile order of long chains and of large random suites.

#include <benchmark/benchmark.h>

#include <random>

#include "build/CompileOrder.hpp"

namespace hearthmake {
namespace {

// Each project references the next of the list, so that every pass puts one more in its place.
ReferenceGraph Chain(std::uint32_t count) {
  ReferenceGraph graph;
  for (std::uint32_t project = 0; project < count; ++project) {
    if (project + 1 < count) graph.targets.push_back(project + 1);
    graph.CloseProject();
  }
  return graph;
}

// References only to projects of a hidden order's earlier part, the list itself being shuffled.
ReferenceGraph RandomAcyclic(std::uint32_t count, int references) {
  std::mt19937 random(1);
  std::vector<std::uint32_t> hidden(count);
  for (std::uint32_t i = 0; i < count; ++i) hidden[i] = i;
  std::shuffle(hidden.begin(), hidden.end(), random);
  std::vector<std::uint32_t> rank(count);
  for (std::uint32_t i = 0; i < count; ++i) rank[hidden[i]] = i;
  ReferenceGraph graph;
  for (std::uint32_t project = 0; project < count; ++project) {
    for (int i = 0; i < references && rank[project] > 0; ++i) {
      graph.targets.push_back(hidden[random() % rank[project]]);
    }
    graph.CloseProject();
  }
  return graph;
}

ReferenceGraph Ring(std::uint32_t count) {
  ReferenceGraph graph = Chain(count);
  graph.targets.push_back(0);
  graph.first.back() = static_cast<std::uint32_t>(graph.targets.size());
  return graph;
}

void Settle(benchmark::State& state, const ReferenceGraph& graph, bool isSettled) {
  for (auto _ : state) {
    const CompileOrder order = SettleCompileOrder(graph);
    if (order.isSettled != isSettled) state.SkipWithError("wrong verdict");
  }
}

void ChainInWorstListing(benchmark::State& state) {
  Settle(state, Chain(static_cast<std::uint32_t>(state.range(0))), true);
}
BENCHMARK(ChainInWorstListing)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

void RandomAcyclicSuite(benchmark::State& state) {
  Settle(state, RandomAcyclic(static_cast<std::uint32_t>(state.range(0)), 4), true);
}
BENCHMARK(RandomAcyclicSuite)->Arg(350)->Arg(35000)->Unit(benchmark::kMillisecond);

void CycleOfAll(benchmark::State& state) {
  Settle(state, Ring(static_cast<std::uint32_t>(state.range(0))), false);
}
BENCHMARK(CycleOfAll)->Arg(1000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace hearthmake
