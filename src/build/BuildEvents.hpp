#pragma once

#include <cstdint>
#include <string>

#include "automation/Interface.hpp"
#include "automation/Variant.hpp"

namespace hearthmake {

class Project;
class SSProject;

// What a host hears of a build: the source interface __Build, its events in order. A host derives from it
// and overrides what it wants to hear. Flags that come by reference reach the library when the host sets
// them. An error that a handler throws ends the step as an error of the step itself.
class BuildEvents {
 public:
  static const automation::Interface& Describe();

  BuildEvents() = default;
  BuildEvents(const BuildEvents&) = delete;
  BuildEvents& operator=(const BuildEvents&) = delete;
  virtual ~BuildEvents() = default;

  // A project is about to be compiled; bCancel ends the run before it.
  virtual void WillCompile(Project& /*objProject*/, bool& /*bCancel*/) {}
  // The run stopped; the project is null when none was being handled.
  virtual void BuildFaild(Project* /*objProject*/, const std::string& /*strMessage*/,
                          bool /*bCompileError*/) {}
  // The run was ended by a host's bCancel.
  virtual void BuildCancled(Project& /*objProject*/) {}
  virtual void GettingLatestVersion(SSProject& /*objSSProject*/, bool& /*bCancel*/) {}
  virtual void MTSEvent(const std::string& /*strInfo*/, bool& /*Cancel*/) {}
  virtual void ProjectAdded(Project& /*NewProject*/) {}
  virtual void BuildComplete() {}
  virtual void Error(const automation::Variant& /*strMessage*/) {}
  virtual void ProjectCompiled(Project& /*objProject*/) {}
  virtual void BuildStart(bool /*bResume*/) {}
  // Progress of scripts (0 to 100) and notices of the library itself (0).
  virtual void ScriptNotify(const std::string& /*strMessage*/, automation::Variant& /*Cancel*/,
                            std::int32_t /*Progress*/) {}
};

}  // namespace hearthmake
