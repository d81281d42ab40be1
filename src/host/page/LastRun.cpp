#include "host/page/LastRun.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <cmath>

#include "automation/Error.hpp"
#include "foundation/Apartment.hpp"
#include "host/text/Json.hpp"

namespace hearthmake::host {

namespace {

using nlohmann::json;
using nlohmann::ordered_json;
using Outcome = RememberedProject::Outcome;

// A file beyond this is none of ours.
constexpr std::int64_t kLimit = std::int64_t{64} * 1024 * 1024;
constexpr int kFormat = 1;
// Shorter differences are the machine's, not the project's.
constexpr double kLeastSeconds = 0.3;
constexpr double kLeastShare = 0.25;

Outcome OutcomeOf(ProjectOutcome outcome, Outcome last) {
  switch (outcome) {
    case ProjectOutcome::Compiled:
    case ProjectOutcome::UpToDate:
    case ProjectOutcome::Earlier: return Outcome::Compiled;
    case ProjectOutcome::Failed: return Outcome::Failed;
    default: return last;
  }
}

const char* WordOf(Outcome outcome) {
  return outcome == Outcome::Compiled ? "compiled" : outcome == Outcome::Failed ? "failed" : "unknown";
}

Outcome OutcomeNamed(const std::string& word) {
  return word == "compiled" ? Outcome::Compiled : word == "failed" ? Outcome::Failed : Outcome::Unknown;
}

RememberedProject ParseProject(const json& value) {
  RememberedProject project;
  project.id = value.at("id").get<std::int32_t>();
  project.name = value.at("name").get<std::string>();
  project.outcome = OutcomeNamed(value.at("outcome").get<std::string>());
  project.seconds = value.at("seconds").get<double>();
  project.facts.version = value.at("version").get<std::string>();
  project.facts.size = value.at("size").get<std::int64_t>();
  project.facts.library = value.at("library").get<std::string>();
  project.facts.libraryVersion = value.at("libraryVersion").get<std::string>();
  return project;
}

bool IsWorthAWord(double seconds, double last) {
  const double change = std::abs(seconds - last);
  return change >= kLeastSeconds && change >= kLeastShare * std::max(seconds, last);
}

ProjectChange::Kind KindOf(Outcome now, Outcome last) {
  if (now == Outcome::Failed)
    return last == Outcome::Failed ? ProjectChange::Kind::StillFailing : ProjectChange::Kind::NewlyFailing;
  const bool isFixed = now == Outcome::Compiled && last == Outcome::Failed;
  return isFixed ? ProjectChange::Kind::Fixed : ProjectChange::Kind::None;
}

}  // namespace

const RememberedProject* LastRun::Find(std::int32_t id) const {
  const auto at = std::find_if(projects.begin(), projects.end(), [&](const auto& p) { return p.id == id; });
  return at == projects.end() ? nullptr : &*at;
}

std::string LastRunFileName(std::int32_t idBuild) { return fmt::format("LastRun-{}.json", idBuild); }

LastRun Remember(const RunRecord& record, const RunFacts& facts, const LastRun* last) {
  LastRun run;
  run.began = std::chrono::duration_cast<std::chrono::seconds>(record.Began().time_since_epoch()).count();
  run.seconds = record.Seconds();
  for (const ProjectRecord& project : record.Projects()) {
    const RememberedProject* before = last == nullptr ? nullptr : last->Find(project.id);
    RememberedProject now = before == nullptr ? RememberedProject() : *before;
    now.id = project.id;
    now.name = project.name;
    now.outcome = OutcomeOf(project.outcome, now.outcome);
    if (project.outcome == ProjectOutcome::Compiled) now.seconds = project.seconds;
    const auto found = facts.Projects().find(project.id);
    if (found != facts.Projects().end()) now.facts = found->second.after;
    run.projects.push_back(std::move(now));
  }
  return run;
}

std::string LastRunText(const LastRun& run) {
  auto projects = ordered_json::array();
  for (const RememberedProject& project : run.projects) {
    projects.push_back({{"id", project.id},
                        {"name", project.name},
                        {"outcome", WordOf(project.outcome)},
                        {"seconds", std::round(project.seconds * 1000) / 1000},
                        {"version", project.facts.version},
                        {"size", project.facts.size},
                        {"library", project.facts.library},
                        {"libraryVersion", project.facts.libraryVersion}});
  }
  return JsonText({{"format", kFormat},
                   {"began", run.began},
                   {"seconds", std::round(run.seconds * 1000) / 1000},
                   {"projects", std::move(projects)}},
                  1) +
         "\n";
}

std::optional<LastRun> ParseLastRun(const std::string& text) {
  try {
    const json value = json::parse(text);
    if (value.at("format").get<int>() != kFormat) return std::nullopt;
    LastRun run;
    run.began = value.at("began").get<std::int64_t>();
    run.seconds = value.at("seconds").get<double>();
    for (const json& project : value.at("projects")) run.projects.push_back(ParseProject(project));
    return run;
  } catch (const json::exception&) {
    return std::nullopt;
  }
}

std::optional<LastRun> ReadLastRun(const std::string& path) {
  try {
    const std::int64_t size = Ports().files->Stamp(path).size;
    if (size < 0 || size > kLimit) return std::nullopt;
    return ParseLastRun(Ports().files->Read(path));
  } catch (const automation::Error&) {
    return std::nullopt;
  }
}

bool ProjectChange::IsAny() const {
  return kind != Kind::None || hasNewLibrary || hasNewLibraryVersion || hasNewVersion || sizeChange != 0 ||
         secondsChange != 0;
}

ProjectChange CompareWithLast(const RememberedProject& now, ProjectOutcome outcome, const LastRun& last) {
  ProjectChange change;
  const RememberedProject* before = last.Find(now.id);
  if (before == nullptr) {
    change.kind = ProjectChange::Kind::NewProject;
    return change;
  }
  change.last = *before;
  // Nothing is known anew of a project that the run did not come to.
  const Outcome decided = OutcomeOf(outcome, Outcome::Unknown);
  change.kind = KindOf(decided, before->outcome);
  const ProjectFacts& facts = now.facts;
  const ProjectFacts& old = before->facts;
  const bool haveLibraries = !facts.library.empty() && !old.library.empty();
  change.hasNewLibrary = haveLibraries && facts.library != old.library;
  change.hasNewLibraryVersion =
      haveLibraries && !change.hasNewLibrary && facts.libraryVersion != old.libraryVersion;
  change.hasNewVersion = !facts.version.empty() && !old.version.empty() && facts.version != old.version;
  if (facts.size >= 0 && old.size >= 0) change.sizeChange = facts.size - old.size;
  const bool areTimed = now.seconds > 0 && before->seconds > 0;
  if (areTimed && IsWorthAWord(now.seconds, before->seconds))
    change.secondsChange = now.seconds - before->seconds;
  return change;
}

std::vector<std::string> GoneProjects(const LastRun& now, const LastRun& last) {
  std::vector<std::string> names;
  for (const RememberedProject& project : last.projects) {
    if (now.Find(project.id) == nullptr) names.push_back(project.name);
  }
  return names;
}

}  // namespace hearthmake::host
