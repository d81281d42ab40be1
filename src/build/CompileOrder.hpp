#pragma once

#include <cstdint>
#include <vector>

namespace hearthmake {

// The references between projects, by their index in the list: those of project p are
// targets[first[p]] to targets[first[p + 1] - 1].
struct ReferenceGraph {
  std::vector<std::uint32_t> first{0};
  std::vector<std::uint32_t> targets;

  std::size_t ProjectCount() const { return first.size() - 1; }
  void CloseProject() { first.push_back(static_cast<std::uint32_t>(targets.size())); }
};

struct CompileOrder {
  std::vector<std::uint32_t> order;  // order[i] is the index of the project that comes i-th
  bool isSettled = false;
};

// Reorders the list by repeated passes until each project comes after those it references. A pass walks
// the list and puts each project's references, then the project itself, behind what it has put already.
// An order that is not settled after as many passes as there are projects, and two more, never will be:
// the references form a cycle, and the order is what the last pass left.
CompileOrder SettleCompileOrder(const ReferenceGraph& graph);

}  // namespace hearthmake
