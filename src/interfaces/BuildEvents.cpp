#include "build/BuildEvents.hpp"

#include "automation/Declare.hpp"
#include "project/Project.hpp"
#include "sourcecontrol/SSProject.hpp"

namespace hearthmake {

const automation::Interface& BuildEvents::Describe() {
  using automation::kByValue;
  static const automation::Interface kInterface =
      automation::Declare("Build", "__Build", "{10B5B0DA-68F8-4B69-B054-3A5B58D1E1BE}")
          .event<&BuildEvents::WillCompile>("WillCompile", {"objProject", "bCancel"})
          .event<&BuildEvents::BuildFaild>("BuildFaild", {"objProject", "strMessage", "bCompileError"})
          .event<&BuildEvents::BuildCancled>("BuildCancled", {"objProject"})
          .event<&BuildEvents::GettingLatestVersion>("GettingLatestVersion", {"objSSProject", "bCancel"})
          .event<&BuildEvents::MTSEvent>("MTSEvent", {"strInfo", "Cancel"})
          .event<&BuildEvents::ProjectAdded>("ProjectAdded", {"NewProject"})
          .event<&BuildEvents::BuildComplete>("BuildComplete")
          .event<&BuildEvents::Error>("Error", {"strMessage"})
          .event<&BuildEvents::ProjectCompiled>("ProjectCompiled", {"objProject"})
          .event<&BuildEvents::BuildStart>("BuildStart", {"bResume"})
          .event<&BuildEvents::ScriptNotify>("ScriptNotify",
                                             {{"strMessage", kByValue}, "Cancel", {"Progress", kByValue}})
          .build();
  return kInterface;
}

}  // namespace hearthmake
