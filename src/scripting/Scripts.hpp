#pragma once

#include <cstdint>
#include <string>

#include "automation/Interface.hpp"
#include "automation/Object.hpp"

namespace hearthmake {

class Build;
class Project;

// The points of a build run at which a script of the user's runs.
enum class BuildScripts : std::int32_t {
  BS_BEFORESOURCESAFE = 0,
  BS_BEFORECOMPILE = 1,
  BS_BEFORE_PROJECT_COMPILE = 2,
  BS_AFTER_PROJECT_COMPILE = 3,
  BS_BUILDFAILED = 4,
  BS_BUILDCOMPLETE = 5,
  BS_AFTERMTS = 6,
};
const automation::Enumeration& DescribeEnumeration(BuildScripts);

// The seven event scripts of a build. They are neither stored nor run yet: every text is empty, so that no
// point of a run has a script.
class Scripts final : public automation::Object {
 public:
  static const automation::Interface& Describe();
  const automation::Interface& Declaration() const override { return Describe(); }

  explicit Scripts(Build& build);

  std::string BeforeSourceSafe() const { return Text(BuildScripts::BS_BEFORESOURCESAFE); }
  std::string BeforeComplie() const { return Text(BuildScripts::BS_BEFORECOMPILE); }
  std::string BeforeProjectComplie() const { return Text(BuildScripts::BS_BEFORE_PROJECT_COMPILE); }
  std::string AfterProjectCompile() const { return Text(BuildScripts::BS_AFTER_PROJECT_COMPILE); }
  std::string BuildFailed() const { return Text(BuildScripts::BS_BUILDFAILED); }
  std::string CompileComplete() const { return Text(BuildScripts::BS_BUILDCOMPLETE); }
  std::string AfterMTSpackage() const { return Text(BuildScripts::BS_AFTERMTS); }

  // For the build.
  std::string Text(BuildScripts /*event*/) const { return {}; }
  void RunEvent(BuildScripts event, Project* objProject);
  void ReleaseMembers() {}
};

}  // namespace hearthmake
