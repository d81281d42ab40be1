#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "automation/Interface.hpp"
#include "deployment/COMApplication.hpp"
#include "deployment/MTSPackage.hpp"
#include "host/Session.hpp"
#include "host/builds/ProjectGraph.hpp"

namespace hearthmake::host {

// The packages of a build. Each is one row that the library shows twice, as MTSPackage and as COMApplication;
// people see one thing with the properties of both.

using Package = automation::Ref<COMApplication>;

std::vector<Package> AllPackages(Build& build);
// By name or id. HostError when there is none, or several of the name.
Package FindPackage(Build& build, const std::string& nameOrId);
// The same package in its other shape.
automation::Ref<MTSPackage> AsMts(Build& build, const COMApplication& package);
// The projects that go into it, in list order.
ProjectList ProjectsOf(Build& build, const COMApplication& package);
std::string NamesOf(const ProjectList& projects);

// A property of either shape.
struct PackageProperty {
  const automation::Member* member;
  bool isOfMts;  // of MTSPackage only
};
// The properties that can be set and stored, without the password, which nobody types where others see it.
std::vector<PackageProperty> SettablePackageProperties();
// The properties to show, without the password.
std::vector<PackageProperty> ReadablePackageProperties();

// What a project is that can go into a package: an ActiveX DLL or EXE.
bool IsServerComponent(const Project& project);

// Puts a project into the package of this id (0: none) and stores it.
void AssignPackage(Project& project, std::int32_t packageId);

}  // namespace hearthmake::host
