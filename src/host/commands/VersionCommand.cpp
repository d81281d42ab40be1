#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>

#include "foundation/modDatabase.hpp"
#include "host/builds/ChosenProjects.hpp"
#include "host/builds/EditCycle.hpp"
#include "host/commands/Commands.hpp"
#include "host/text/Json.hpp"

namespace hearthmake::host {

namespace {

using nlohmann::ordered_json;

constexpr std::int32_t kHighest = 9999;
constexpr std::array<const char*, 3> kParts = {"major", "minor", "revision"};

// The three numbers, in the order of kParts.
using Version = std::array<std::int32_t, kParts.size()>;

struct VersionChange {
  automation::Ref<Project> project;
  Version before{};
  Version after{};
};

std::string VersionText(const Version& version) {
  return fmt::format("{}.{}.{}", version[0], version[1], version[2]);
}

Version VersionOf(const Project& project) {
  return {project.MajorVer(), project.MinorVer(), project.RevisionVer()};
}

// Names of projects begin with a letter, and ids have no points.
bool LooksLikeVersion(const std::string& word) {
  return !word.empty() && word[0] >= '0' && word[0] <= '9' && word.find('.') != std::string::npos;
}

Version ParseVersion(const std::string& text) {
  Version version{};
  const char* next = text.data();
  const char* const end = next + text.size();
  for (std::size_t i = 0; i < version.size(); ++i) {
    const bool isLast = i + 1 == version.size();
    const auto result = std::from_chars(next, end, version[i]);
    const bool isNumber = result.ec == std::errc() && *next != '-' && version[i] <= kHighest;
    if (!isNumber || (isLast ? result.ptr != end : result.ptr == end || *result.ptr != '.')) {
      throw HostError(fmt::format("'{}' is no version.", text),
                      fmt::format("Give three numbers from 0 to {}, parted by points: 1.2.0", kHighest));
    }
    next = result.ptr + (isLast ? 0 : 1);
  }
  return version;
}

Version Bumped(const Project& project, const Version& before, const std::string& part) {
  const auto found = std::find(kParts.begin(), kParts.end(), part);
  const auto index = static_cast<std::size_t>(found - kParts.begin());
  Version version = before;
  if (version.at(index) >= kHighest) {
    throw HostError(fmt::format("The {} number of {} can't grow: it is {}.", part, Printable(project.Name()),
                                version.at(index)),
                    "Nothing was changed. Bump a higher part, or give the version itself.");
  }
  ++version.at(index);
  std::fill(version.begin() + static_cast<std::ptrdiff_t>(index) + 1, version.end(), 0);
  return version;
}

std::vector<VersionChange> PlannedChanges(Build& build, const VersionArguments& arguments) {
  std::vector<std::string> names = arguments.words;
  std::optional<Version> wanted;
  if (!names.empty() && LooksLikeVersion(names.front())) {
    wanted = ParseVersion(names.front());
    names.erase(names.begin());
  }
  if (wanted && !arguments.bump.empty()) {
    throw HostError("A version and --bump don't go together.", "Give one of them.");
  }
  std::vector<VersionChange> changes;
  // In list order: nothing here depends on the order of compiling.
  for (const auto& project : names.empty() ? AllProjects(build) : ChosenProjects(build, names)) {
    VersionChange change{project, VersionOf(*project), {}};
    change.after = wanted.value_or(change.before);
    if (!arguments.bump.empty()) change.after = Bumped(*project, change.before, arguments.bump);
    changes.push_back(std::move(change));
  }
  return changes;
}

void Store(Project& project, const Version& version) {
  EditCycle edit(project);
  project.SetMajorVer(static_cast<std::int16_t>(version[0]));
  project.SetMinorVer(static_cast<std::int16_t>(version[1]));
  project.SetRevisionVer(static_cast<std::int16_t>(version[2]));
  edit.Apply();
}

ordered_json JsonOf(const VersionChange& change) {
  return {{"id", change.project->Id()},
          {"name", change.project->Name()},
          {"version", VersionText(change.after)},
          {"major", change.after[0]},
          {"minor", change.after[1]},
          {"revision", change.after[2]},
          {"autoIncrement", change.project->AutoIncrementVer()},
          {"previous", VersionText(change.before)}};
}

std::string LineOf(const VersionChange& change) {
  const bool isChanged = change.before != change.after;
  return fmt::format("{:<24} {}{}{}\n", Printable(change.project->Name()), VersionText(change.before),
                     isChanged ? " -> " + VersionText(change.after) : "",
                     change.project->AutoIncrementVer() ? "  (revision counted by the compiler)" : "");
}

}  // namespace

ExitStatus VersionCommand(Session& session, const VersionArguments& arguments) {
  const auto build = session.OpenBuild(arguments.build);
  const std::vector<VersionChange> changes = PlannedChanges(*build, arguments);
  const auto isChange = [](const VersionChange& change) { return change.before != change.after; };
  if (std::any_of(changes.begin(), changes.end(), isChange)) {
    modDatabase::InTransaction([&] {
      for (const VersionChange& change : changes) {
        if (isChange(change)) Store(*change.project, change.after);
      }
    });
  }
  auto json = ordered_json::array();
  std::string text;
  for (const VersionChange& change : changes) {
    json.push_back(JsonOf(change));
    text += LineOf(change);
  }
  session.Out().Out(arguments.json ? JsonText(json, 2) + "\n" : text);
  return ExitStatus::Done;
}

}  // namespace hearthmake::host
