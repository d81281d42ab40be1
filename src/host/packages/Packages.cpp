#include "host/packages/Packages.hpp"

#include <fmt/format.h>

#include <algorithm>

#include "automation/Text.hpp"
#include "build/Build.hpp"
#include "deployment/COMApplications.hpp"
#include "deployment/MTSPackages.hpp"
#include "host/HostError.hpp"
#include "host/builds/EditCycle.hpp"
#include "host/builds/Properties.hpp"

namespace hearthmake::host {

namespace {

using automation::EqualsIgnoreCaseAscii;
using automation::Member;
using automation::Variant;

using Members = std::vector<const Member*>;

// Those of COMApplication, then what only MTSPackage has.
std::vector<PackageProperty> Joined(const Members& ofApplication, const Members& ofPackage) {
  std::vector<PackageProperty> properties;
  const auto has = [&](const Member& member) {
    return std::any_of(properties.begin(), properties.end(), [&](const PackageProperty& known) {
      return EqualsIgnoreCaseAscii(known.member->name, member.name);
    });
  };
  const auto add = [&](const Member& member, bool isOfMts) {
    const bool isLeftOut = member.name == "Password" || member.name == "Skip";
    if (!isLeftOut && !has(member)) properties.push_back({&member, isOfMts});
  };
  for (const Member* member : ofApplication) add(*member, false);
  for (const Member* member : ofPackage) add(*member, true);
  return properties;
}

[[noreturn]] void RefuseUnknown(Build& build, const std::string& nameOrId, const std::vector<Package>& all) {
  std::string names;
  for (const Package& package : all)
    names += fmt::format("{}{} ({})", names.empty() ? "" : ", ", package->Name(), package->Id());
  throw HostError(
      fmt::format("The build '{}' has no package '{}'.", build.Name(), nameOrId),
      names.empty()
          ? fmt::format("It has none yet. Make one with: hearthmake packages '{}' add NAME", build.Name())
          : "It has: " + names);
}

}  // namespace

std::vector<Package> AllPackages(Build& build) {
  std::vector<Package> packages;
  const auto walk = build.COMApplications().NewEnum();
  for (Variant item; walk->Next(item);) packages.emplace_back(static_cast<COMApplication*>(item.AsObject()));
  return packages;
}

Package FindPackage(Build& build, const std::string& nameOrId) {
  const std::vector<Package> all = AllPackages(build);
  std::vector<Package> found;
  for (const Package& package : all) {
    if (automation::Decimal(package->Id()) == nameOrId) return package;
    if (automation::EqualsIgnoreCase(package->Name(), automation::Trim(nameOrId))) found.push_back(package);
  }
  if (found.empty()) RefuseUnknown(build, nameOrId, all);
  if (found.size() > 1)
    throw HostError(fmt::format("There are {} packages '{}'.", found.size(), nameOrId),
                    fmt::format("Say which one by its id: hearthmake packages '{}'", build.Name()));
  return found.front();
}

automation::Ref<MTSPackage> AsMts(Build& build, const COMApplication& package) {
  return build.MTSPackages().Item(Variant::FromText(automation::Decimal(package.Id())));
}

ProjectList ProjectsOf(Build& build, const COMApplication& package) {
  ProjectList projects;
  for (auto& project : AllProjects(build)) {
    if (project->MtsPackageId() == package.Id()) projects.push_back(std::move(project));
  }
  return projects;
}

std::string NamesOf(const ProjectList& projects) {
  std::string names;
  for (const auto& project : projects) names += (names.empty() ? "" : ", ") + project->Name();
  return names;
}

std::vector<PackageProperty> SettablePackageProperties() {
  return Joined(SettableProperties(COMApplication::Describe()), SettableProperties(MTSPackage::Describe()));
}

std::vector<PackageProperty> ReadablePackageProperties() {
  return Joined(ReadableProperties(COMApplication::Describe()), ReadableProperties(MTSPackage::Describe()));
}

bool IsServerComponent(const Project& project) {
  return project.ProjectType() == ProjectTypes::ActiveXDll ||
         project.ProjectType() == ProjectTypes::ActiveXExe;
}

void AssignPackage(Project& project, std::int32_t packageId) {
  EditCycle edit(project);
  project.SetMtsPackageId(packageId);
  edit.Apply();
}

}  // namespace hearthmake::host
