#include "host/run/ChangeFinder.hpp"

#include <fmt/chrono.h>
#include <fmt/format.h>

#include <ctime>
#include <utility>
#include <vector>

#include "automation/Error.hpp"
#include "automation/Text.hpp"
#include "host/builds/ProjectSources.hpp"

namespace hearthmake::host {

namespace {

constexpr std::int64_t kSecond = 1'000'000'000;
constexpr std::int64_t kMillisecond = 1'000'000;

// Local time, to the millisecond or to the last digit.
std::string TimeText(std::int64_t modified, bool isExact) {
  std::int64_t seconds = modified / kSecond;
  std::int64_t rest = modified % kSecond;
  if (rest < 0) {
    --seconds;
    rest += kSecond;
  }
  const std::string fraction =
      isExact ? fmt::format("{:09}", rest) : fmt::format("{:03}", rest / kMillisecond);
  try {
    return fmt::format("{:%Y-%m-%d %H:%M:%S}.{}", fmt::localtime(static_cast<std::time_t>(seconds)),
                       fraction);
  } catch (const fmt::format_error&) {
    return fmt::format("{}.{}", seconds, fraction);  // beyond the calendar
  }
}

// The file of a project's binary; empty where the project names none.
std::string BinaryOf(Project& project) {
  try {
    return project.FullPath32();
  } catch (const automation::Error&) {
    return {};
  }
}

}  // namespace

bool IsNewer(std::int64_t file, std::int64_t binary) {
  const bool isCoarse = binary % kSecond == 0;
  return isCoarse ? file / kSecond > binary / kSecond : file > binary;
}

ChangeFinder::ChangeFinder(platform::FileSystem& files, const RewrittenFiles& rewritten, PathText pathText)
    : m_files(files), m_rewritten(rewritten), m_pathText(std::move(pathText)) {}

void ChangeFinder::LeaveOutUpToDate(RunPlan& plan, const ProjectList& inCompileOrder,
                                    const ProjectGraph& graph) {
  NoteBinaries(plan, inCompileOrder);
  // The name of a project that the plan compiles and that this one depends on; empty for none.
  std::vector<std::string> compiledBelow(inCompileOrder.size());
  for (std::size_t i = 0; i < inCompileOrder.size(); ++i) {
    for (const std::size_t target : graph.Targets(i)) {
      const PlannedProject& planned = plan.Projects()[target];
      if (compiledBelow[i].empty()) compiledBelow[i] = planned.Runs() ? planned.name : compiledBelow[target];
    }
    if (!plan.Projects()[i].Runs()) continue;
    if (auto why = WhyChanged(*inCompileOrder[i], i, graph.Targets(i))) {
      plan.GiveReason(i, std::move(*why));
    } else if (!compiledBelow[i].empty()) {
      plan.GiveReason(i, fmt::format("it depends on {}, which is compiled", compiledBelow[i]));
    } else {
      plan.LeaveOut(i, RunChoice::UpToDate, ChoiceText(RunChoice::UpToDate));
    }
  }
}

void ChangeFinder::NoteBinaries(const RunPlan& plan, const ProjectList& projects) {
  m_binaries.clear();
  m_lastMakers.clear();
  for (std::size_t i = 0; i < projects.size(); ++i) {
    m_binaries.push_back(BinaryOf(*projects[i]));
    const bool isMade = plan.Projects()[i].choice != RunChoice::SwitchedOff;
    if (isMade) m_lastMakers[automation::Lower(m_binaries[i])] = i;
  }
}

// Two projects may make the same binary, and the one that comes last in a run leaves its own. What was
// compiled in between is older than that, and would be after any other run.
bool ChangeFinder::IsMadeBehind(std::size_t position, const std::string& binary) const {
  const auto last = m_lastMakers.find(automation::Lower(binary));
  return last != m_lastMakers.end() && last->second > position;
}

std::optional<std::string> ChangeFinder::WhyChanged(Project& project, std::size_t position,
                                                    const std::vector<std::size_t>& referenced) {
  const File binary = Look(m_binaries[position]);
  if (binary.path.empty()) return "it names no binary";
  if (!binary.IsThere()) return m_pathText(binary.path) + " is missing";
  if (auto why = WhyFileChanged(project, binary)) return why;
  for (const std::size_t target : referenced) {
    const File library = Look(m_binaries[target]);
    if (!library.IsThere() || !IsNewer(library.stamp.modified, binary.stamp.modified)) continue;
    if (!IsMadeBehind(position, library.path)) return Compare(library, binary);
  }
  return std::nullopt;
}

std::optional<std::string> ChangeFinder::WhyFileChanged(Project& project, const File& binary) {
  const File projectFile = Look(project.ProjectPath());
  if (!projectFile.IsThere()) return m_pathText(projectFile.path) + " is missing";
  const bool isNewer = IsNewer(projectFile.stamp.modified, binary.stamp.modified);
  if (isNewer && !m_rewritten.IsAsCompiled(project.Id(), projectFile.stamp, binary.stamp))
    return Compare(projectFile, binary);
  try {
    return WhySourceChanged(projectFile, binary);
  } catch (const automation::Error& error) {
    return error.Description();  // it can't be read: the compile will tell
  }
}

std::optional<std::string> ChangeFinder::WhySourceChanged(const File& projectFile, const File& binary) {
  const std::string folder = projectFile.path.substr(0, projectFile.path.rfind('\\') + 1);
  for (ProjectSource& source : SourcesOf(m_files.Read(projectFile.path), folder)) {
    const bool mayBeMissing = source.mayBeMissing;
    const File file = Look(std::move(source.path));
    if (!file.IsThere() && mayBeMissing) continue;
    if (!file.IsThere()) return m_pathText(file.path) + " is missing";
    if (IsNewer(file.stamp.modified, binary.stamp.modified)) return Compare(file, binary);
  }
  return std::nullopt;
}

std::string ChangeFinder::Compare(const File& file, const File& binary) const {
  const std::int64_t fileTime = file.stamp.modified;
  const std::int64_t binaryTime = binary.stamp.modified;
  const bool isClose = fileTime / kMillisecond == binaryTime / kMillisecond;
  return fmt::format("{} ({}) is newer than {} ({})", m_pathText(file.path), TimeText(fileTime, isClose),
                     m_pathText(binary.path), TimeText(binaryTime, isClose));
}

ChangeFinder::File ChangeFinder::Look(std::string path) {
  const auto [known, isNew] = m_stamps.try_emplace(path);
  if (isNew && !path.empty()) known->second = m_files.Stamp(path);
  return {std::move(path), known->second};
}

}  // namespace hearthmake::host
