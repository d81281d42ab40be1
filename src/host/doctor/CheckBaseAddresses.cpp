#include <fmt/format.h>

#include <algorithm>
#include <cstdint>

#include "host/doctor/Checks.hpp"
#include "host/text/Numbers.hpp"

namespace hearthmake::host {

namespace {

// Visual Basic's own default: nobody has chosen it.
constexpr std::uint32_t kDefault = 0x11000000;
constexpr std::uint64_t kStep = 0x10000;

struct Range {
  std::string name;
  std::uint32_t base = 0;
  std::uint64_t end = 0;  // as far as the file's size tells
};

std::vector<Range> RangesOf(const ProjectList& projects) {
  std::vector<Range> ranges;
  for (const auto& project : projects) {
    if (!project->IsInprocess()) continue;
    const auto base = static_cast<std::uint32_t>(project->DllBaseAddress());
    const auto size = static_cast<std::uint64_t>(std::max<std::int32_t>(project->FileSizeExe32(), 1));
    ranges.push_back({project->Name(), base, base + (size + kStep - 1) / kStep * kStep});
  }
  std::stable_sort(ranges.begin(), ranges.end(),
                   [](const Range& a, const Range& b) { return a.base < b.base; });
  return ranges;
}

std::string Address(std::uint32_t base) { return AddressText(static_cast<std::int32_t>(base)); }

}  // namespace

// Libraries that want one place are moved when they are loaded, which takes time and memory.
void CheckBaseAddresses(Session& /*session*/, const ExaminedBuild& examined, Findings& findings) {
  const std::vector<Range> ranges = RangesOf(examined.projects);
  const std::string mend = fmt::format("hearthmake bases {}", examined.name);
  for (std::size_t first = 0; first < ranges.size();) {
    std::size_t last = first;
    std::string names = ranges[first].name;
    std::uint64_t end = ranges[first].end;
    for (; last + 1 < ranges.size() && ranges[last + 1].base == ranges[first].base; ++last) {
      names += ", " + ranges[last + 1].name;
      end = std::max(end, ranges[last + 1].end);
    }
    const std::string address = Address(ranges[first].base);
    if (last > first && ranges[first].base == kDefault) {
      findings.Note(fmt::format("{} have the base address of new projects.", names), address, mend);
    } else if (last > first) {
      findings.Warn(fmt::format("{} have one base address.", names), address, mend);
    }
    if (last + 1 < ranges.size() && ranges[last + 1].base < end) {
      findings.Warn(fmt::format("{} reaches into the addresses of {}.", names, ranges[last + 1].name),
                    address, mend);
    }
    first = last + 1;
  }
}

}  // namespace hearthmake::host
