#include <fmt/format.h>

#include <algorithm>

#include "foundation/Settings.hpp"
#include "host/commands/Commands.hpp"
#include "host/sources/LatestSources.hpp"
#include "host/sources/SourceProjects.hpp"
#include "host/text/Numbers.hpp"

namespace hearthmake::host {

namespace {

// The collection takes them all but those that are to be skipped.
void GetLatest(Build& build, const SourceList& chosen) {
  for (const auto& source : AllSources(build)) {
    source->SetSkip(std::find(chosen.begin(), chosen.end(), source) == chosen.end());
  }
  build.SSProjects().GetLatestFromSoursafe();
}

// The projects that have no such label.
SourceList GetLabel(const SourceList& chosen, const std::string& label, RunDisplay& display) {
  SourceList without;
  for (const auto& source : chosen) {
    bool isCancelled = false;
    display.GettingLatestVersion(*source, isCancelled);
    if (isCancelled) break;
    if (!source->GetFromLabel(label)) without.push_back(source);
  }
  return without;
}

std::string CountsText(const RunDisplay& display) {
  const std::size_t got = display.Files(SourceFileState::Got);
  const std::size_t skipped = display.Files(SourceFileState::Skipped);
  return fmt::format("got {}, {} unchanged{}", Counted(got, "file"),
                     display.Files(SourceFileState::Unchanged),
                     skipped == 0 ? "" : fmt::format(", {} left as they are", skipped));
}

}  // namespace

ExitStatus SourcesCommand(Session& session, const SourcesArguments& arguments) {
  const auto build = session.OpenBuild(arguments.build);
  session.LibrarySettings();  // junk there is better told before anything is got
  const SourceList chosen = ChosenSources(*build, arguments.projects);
  SourceList without;
  std::string counts;
  const bool isThrough = FollowSources(session, *build, arguments.json, [&](RunDisplay& display) {
    if (arguments.label) {
      without = GetLabel(chosen, *arguments.label, display);
    } else {
      GetLatest(*build, chosen);
    }
    counts = CountsText(display);
  });
  if (!isThrough) {
    session.Out().Note(
        fmt::format("Cancelled. Some files of {} may be as they were.", Printable(build->Name())));
    return ExitStatus::Cancelled;
  }
  for (const auto& source : without) {
    session.Out().Note(fmt::format("{} has no label {}.", Printable(source->Project()), *arguments.label));
  }
  if (!arguments.json) session.Out().Out(fmt::format("{}: {}.\n", Printable(build->Name()), counts));
  return without.empty() ? ExitStatus::Done : ExitStatus::Failed;
}

}  // namespace hearthmake::host
