#include "host/dryrun/UnifiedDiff.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <vector>

namespace hearthmake::host {

namespace {

using Rows = std::vector<std::string_view>;  // with their line ends

constexpr std::size_t kContext = 3;
// Beyond this many changed rows all between the first and the last is shown as replaced: nobody reads a finer
// answer, and finding one takes the square of the number in time and memory.
constexpr std::ptrdiff_t kMostChanges = 500;

// A row of the result: ' ' in both, '-' in the first only, '+' in the second only.
struct Step {
  char kind;
  std::string_view row;
};
using Steps = std::vector<Step>;

Rows RowsOf(std::string_view text) {
  Rows rows;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    const std::size_t length = end == std::string_view::npos ? text.size() : end + 1;
    rows.push_back(text.substr(0, length));
    text.remove_prefix(length);
  }
  return rows;
}

// The shortest way from one list of rows to the other, by the furthest points that can be reached with so
// many changes on each diagonal (Myers, "An O(ND) Difference Algorithm and Its Variations").
class Comparison {
 public:
  Comparison(const Rows& before, const Rows& after)
      : m_before(before),
        m_after(after),
        m_beforeSize(static_cast<std::ptrdiff_t>(before.size())),
        m_afterSize(static_cast<std::ptrdiff_t>(after.size())) {}

  Steps Run() {
    const std::ptrdiff_t most = std::min(m_beforeSize + m_afterSize, kMostChanges);
    m_offset = most + 1;
    m_furthest.assign(static_cast<std::size_t>(2 * most + 3), 0);
    for (std::ptrdiff_t changes = 0; changes <= most; ++changes) {
      m_history.push_back(m_furthest);
      if (Reach(changes)) return GoBack(changes);
    }
    return ReplaceAll();
  }

 private:
  using Points = std::vector<std::ptrdiff_t>;

  std::ptrdiff_t& At(Points& points, std::ptrdiff_t diagonal) const {
    return points[static_cast<std::size_t>(diagonal + m_offset)];
  }
  // Whether the last step to a diagonal was a row that came in.
  bool CameIn(Points& points, std::ptrdiff_t diagonal, std::ptrdiff_t changes) const {
    if (diagonal == -changes) return true;
    return diagonal != changes && At(points, diagonal - 1) < At(points, diagonal + 1);
  }
  bool IsSame(std::ptrdiff_t before, std::ptrdiff_t after) const {
    return m_before[static_cast<std::size_t>(before)] == m_after[static_cast<std::size_t>(after)];
  }

  bool Reach(std::ptrdiff_t changes) {
    for (std::ptrdiff_t diagonal = -changes; diagonal <= changes; diagonal += 2) {
      std::ptrdiff_t before = CameIn(m_furthest, diagonal, changes) ? At(m_furthest, diagonal + 1)
                                                                    : At(m_furthest, diagonal - 1) + 1;
      std::ptrdiff_t after = before - diagonal;
      while (before < m_beforeSize && after < m_afterSize && IsSame(before, after)) {
        ++before;
        ++after;
      }
      At(m_furthest, diagonal) = before;
      if (before >= m_beforeSize && after >= m_afterSize) return true;
    }
    return false;
  }

  Steps GoBack(std::ptrdiff_t changes) {
    Steps steps;
    std::ptrdiff_t before = m_beforeSize;
    std::ptrdiff_t after = m_afterSize;
    for (; changes >= 0; --changes) {
      Points& points = m_history[static_cast<std::size_t>(changes)];
      const std::ptrdiff_t diagonal = before - after;
      const bool cameIn = CameIn(points, diagonal, changes);
      const std::ptrdiff_t from = cameIn ? diagonal + 1 : diagonal - 1;
      const std::ptrdiff_t fromBefore = changes == 0 ? 0 : At(points, from);
      const std::ptrdiff_t fromAfter = changes == 0 ? 0 : fromBefore - from;
      while (before > fromBefore && after > fromAfter) {
        steps.push_back({' ', m_before[static_cast<std::size_t>(--before)]});
        --after;
      }
      if (changes == 0) break;
      if (cameIn) {
        steps.push_back({'+', m_after[static_cast<std::size_t>(--after)]});
      } else {
        steps.push_back({'-', m_before[static_cast<std::size_t>(--before)]});
      }
    }
    std::reverse(steps.begin(), steps.end());
    return steps;
  }

  Steps ReplaceAll() const {
    Steps steps;
    for (const std::string_view row : m_before) steps.push_back({'-', row});
    for (const std::string_view row : m_after) steps.push_back({'+', row});
    return steps;
  }

  const Rows& m_before;
  const Rows& m_after;
  std::ptrdiff_t m_beforeSize;
  std::ptrdiff_t m_afterSize;
  std::ptrdiff_t m_offset = 0;  // of diagonal 0
  Points m_furthest;
  std::vector<Points> m_history;
};

// What is the same at both ends costs nothing.
Steps StepsBetween(Rows before, Rows after) {
  const auto [differentBefore, differentAfter] =
      std::mismatch(before.begin(), before.end(), after.begin(), after.end());
  const Rows head(before.begin(), differentBefore);
  before.erase(before.begin(), differentBefore);
  after.erase(after.begin(), differentAfter);
  const auto [tailBefore, tailAfter] =
      std::mismatch(before.rbegin(), before.rend(), after.rbegin(), after.rend());
  const Rows tail(tailBefore.base(), before.end());
  before.erase(tailBefore.base(), before.end());
  after.erase(tailAfter.base(), after.end());

  Steps steps;
  for (const std::string_view row : head) steps.push_back({' ', row});
  const Steps middle = Comparison(before, after).Run();
  steps.insert(steps.end(), middle.begin(), middle.end());
  for (const std::string_view row : tail) steps.push_back({' ', row});
  return steps;
}

std::string LineOf(const Step& step) {
  std::string_view row = step.row;
  const bool isEnded = row.ends_with('\n');
  if (isEnded) row.remove_suffix(1);
  if (row.ends_with('\r')) row.remove_suffix(1);
  std::string line(1, step.kind);
  line.append(row).append("\n");
  return isEnded ? line : line + "\\ No newline at end of file\n";
}

std::string RangeText(std::size_t start, std::size_t count) {
  // A range without rows is named by the row in front of it.
  return count == 1 ? fmt::format("{}", start + 1)
                    : fmt::format("{},{}", count == 0 ? start : start + 1, count);
}

// Where the changes that begin at a step end, with those that are close behind.
std::size_t EndOfHunk(const Steps& steps, std::size_t firstChange) {
  std::size_t end = firstChange + 1;
  for (std::size_t i = end; i < steps.size() && i - end <= 2 * kContext; ++i) {
    if (steps[i].kind != ' ') end = i + 1;
  }
  return end;
}

std::size_t CountWithout(const Steps& steps, std::size_t begin, std::size_t end, char kind) {
  std::size_t count = 0;
  for (std::size_t i = begin; i < end; ++i) count += steps[i].kind == kind ? 0 : 1;
  return count;
}

}  // namespace

std::string UnifiedDiff(std::string_view before, std::string_view after, std::string_view beforeName,
                        std::string_view afterName) {
  if (before == after) return {};
  const Steps steps = StepsBetween(RowsOf(before), RowsOf(after));
  std::string text = fmt::format("--- {}\n+++ {}\n", beforeName, afterName);
  std::size_t done = 0;
  std::size_t beforeRow = 0;
  std::size_t afterRow = 0;
  for (std::size_t i = 0; i < steps.size(); ++i) {
    if (steps[i].kind == ' ') continue;
    const std::size_t begin = std::max(done, i - std::min(i, kContext));
    const std::size_t changed = EndOfHunk(steps, i);
    const std::size_t end = std::min(changed + kContext, steps.size());
    beforeRow += CountWithout(steps, done, begin, '+');
    afterRow += CountWithout(steps, done, begin, '-');
    const std::size_t beforeCount = CountWithout(steps, begin, end, '+');
    const std::size_t afterCount = CountWithout(steps, begin, end, '-');
    text +=
        fmt::format("@@ -{} +{} @@\n", RangeText(beforeRow, beforeCount), RangeText(afterRow, afterCount));
    for (std::size_t step = begin; step < end; ++step) text += LineOf(steps[step]);
    beforeRow += beforeCount;
    afterRow += afterCount;
    done = end;
    i = end - 1;
  }
  return text;
}

}  // namespace hearthmake::host
