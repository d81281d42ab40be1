#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "build/Build.hpp"
#include "host/BuildDatabase.hpp"
#include "host/Composition.hpp"
#include "host/Console.hpp"
#include "host/HostSettings.hpp"

namespace hearthmake::host {

// One run of the command: what its words work with. Nothing is opened before it is needed.
class Session {
 public:
  explicit Session(const HostOptions& options);

  const Console& Out() const { return m_console; }
  HostSettings& Settings() { return m_settings; }
  // Makes the apartment of the library at the first call.
  Composition& Library();
  BuildDatabase Database();

  // The DOS path of a path that was typed; one that is a DOS path already stays as it is.
  std::string DosPath(const std::string& typed);
  // The same for the value of a property: what is no path stays as it is typed.
  std::string PropertyValue(std::string_view property, const std::string& typed);
  // For people: the POSIX path, or the DOS path where it leads nowhere.
  std::string PosixPath(const std::string& dosPath);

  // Every build of the database, with its id and name only. HostError when there is no database.
  std::vector<automation::Ref<Build>> ListBuilds();
  // A build by id or name, loaded. HostError when there is none.
  automation::Ref<Build> OpenBuild(const std::string& idOrName);
  // A fresh one, not stored. HostError when the name is taken.
  automation::Ref<Build> NewBuild(const std::string& name);
  // The name that a build has been given, as it was typed: HostError when it was cut, or when another build
  // has it.
  void RequireFreeName(const Build& build, const std::string& typed);
  // The library's settings; HostError that names their file when it holds junk.
  automation::Ref<hearthmake::Settings> LibrarySettings();

 private:
  Console m_console;
  HostSettings m_settings;
  std::unique_ptr<Composition> m_library;
};

// A project of the build by name or id. HostError when there is none.
automation::Ref<Project> FindProject(Build& build, const std::string& nameOrId);

// The projects in list order.
std::vector<automation::Ref<Project>> AllProjects(Build& build);
// The references of a project in list order.
std::vector<automation::Ref<Reference>> AllReferences(const Project& project);

}  // namespace hearthmake::host
