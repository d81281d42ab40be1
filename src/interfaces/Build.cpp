#include "build/Build.hpp"

#include "automation/Declare.hpp"

namespace hearthmake {

const automation::Interface& Build::Describe() {
  static const automation::Interface kInterface =
      automation::Declare("Build", "_Build", "{ADFA1845-E46A-4D29-87BB-32BF0F4DD63D}",
                          "{9E03676D-1E0D-45EA-BCBF-F50B645AD350}")
          .source(&BuildEvents::Describe)
          .let<&Build::SetName>("Name")
          .get<&Build::Name>("Name")
          .get<&Build::StartDllBaseAddress>("StartDllBaseAddress")
          .let<&Build::SetStartDllBaseAddress>("StartDllBaseAddress")
          .get<&Build::Id>("Id")
          .get<&Build::Projects>("Projects")
          .method<&Build::Load>("Load", {"lngBuildId"})
          .method<&Build::BeginEdit>("BeginEdit")
          .method<&Build::ApplyEdit>("ApplyEdit")
          .method<&Build::CancelEdit>("CancelEdit")
          .method<&Build::Kill>("Kill")
          .method<&Build::Delete>("Delete")
          .method<&Build::FixReferencesInProjectGroup>("FixReferencesInProjectGroup")
          .method<&Build::CreateProjectGroupFile>("CreateProjectGroupFile",
                                                  {"strFileName", "objStartUpProject"})
          .get<&Build::SSProjects>("SSProjects")
          .method<&Build::AutoDetectReferences>("AutoDetectReferences")
          .method<&Build::GenerateDllBaseAddresses>("GenerateDllBaseAddresses", {"lngStart"})
          .get<&Build::MTSPackages>("MTSPackages")
          .get<&Build::COMApplications>("COMApplications")
          .get<&Build::Scripts>("Scripts")
          .get<&Build::FailedProject>("FailedProject")
          .method<&Build::CreateBuildFromPath>("CreateBuildFromPath", {"strPath", "bIncludeTestProjects"})
          .method<&Build::GenerateRegisterBATfile>("GenerateRegisterBATfile",
                                                   {"bRelativePath", "strRelateivePath", "strGeneratedFiles"})
          .method<&Build::StopReporting>("StopReporting", {"bSuccess"})
          .method<&Build::CmdExecute>("CmdExecute", {"strCommand"},
                                      "Executes commands synchronously. Used from scripts.")
          .build();
  return kInterface;
}

}  // namespace hearthmake
