#pragma once

#include <string>

#include "sourcecontrol/SSProject.hpp"
#include "sourcecontrol/SSProjects.hpp"
#include "support/BuildScene.hpp"

namespace hearthmake::support {

// A build with a source-control database for its user Bob, beside whom Ann works.
class SourceScene : public BuildScene {
 public:
  static constexpr const char* kIni = "C:\\vss\\srcsafe.ini";

  SourceScene() { Base().passwords = {{"Bob", "secret"}}; }

  MemorySourceControl::Base& Base() const { return (*sources)[kIni]; }
  SSProjects& All() const { return build->SSProjects(); }

  // A stored project of the build; its files are taken to the folder.
  automation::Ref<SSProject> AddSource(const std::string& project, const std::string& folder,
                                       const std::string& ini = kIni) const {
    auto source = All().Create();
    source->BeginEdit();
    source->SetSrcSafeIni(ini);
    source->SetUser("Bob");
    source->SetPassword("secret");
    source->SetProject(project);
    source->SetWorkingFolder(folder);
    source->ApplyEdit();
    return source;
  }
  // What was asked of source control since the last time, but for the look-ups.
  std::vector<std::string> TakeCalls() const {
    std::vector<std::string> calls;
    for (const std::string& call : sources->calls) {
      if (!call.starts_with("VSSItem ") && !call.starts_with("IsCheckedOut ")) calls.push_back(call);
    }
    sources->calls.clear();
    return calls;
  }
};

}  // namespace hearthmake::support
