#include "host/packages/PackageQuestion.hpp"

#include <fmt/format.h>

#include <iostream>

#include "foundation/Settings.hpp"
#include "host/HostError.hpp"
#include "host/packages/Packages.hpp"
#include "host/system/Terminal.hpp"

namespace hearthmake::host {

namespace {

bool CanAsk() { return IsTerminal(StandardStream::Input) && IsTerminal(StandardStream::Output); }

std::string Choices(const std::vector<Package>& packages) {
  std::string text;
  for (const Package& package : packages)
    text += fmt::format("{}{} {}", text.empty() ? "" : ", ", package->Id(), Printable(package->Name()));
  return text;
}

// The package that was chosen, null for none; asks until the answer is one. False at the end of the input.
bool Ask(Session& session, Build& build, const Project& project, const std::string& choices,
         Package& package) {
  for (;;) {
    session.Out().Out(
        fmt::format("Package of {} ({}; nothing for none): ", Printable(project.Name()), choices));
    std::string answer;
    if (!std::getline(std::cin, answer)) {
      session.Out().Out("\n");
      return false;
    }
    package = nullptr;
    if (answer.empty()) return true;
    try {
      package = FindPackage(build, answer);
      return true;
    } catch (const HostError& error) {
      session.Out().Note(Printable(error.what()));
    }
  }
}

}  // namespace

void AskForPackages(Session& session, Build& build, const ProjectList& projects) {
  if (projects.empty() || !CanAsk() || !session.LibrarySettings()->AskForMTSPackage()) return;
  const std::vector<Package> packages = AllPackages(build);
  if (packages.empty()) return;
  const std::string choices = Choices(packages);
  for (const auto& project : projects) {
    if (!IsServerComponent(*project)) continue;
    Package package;
    if (!Ask(session, build, *project, choices, package)) return;
    if (package) AssignPackage(*project, package->Id());
  }
}

}  // namespace hearthmake::host
