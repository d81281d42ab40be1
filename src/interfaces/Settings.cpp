#include "foundation/Settings.hpp"

#include "automation/Declare.hpp"

namespace hearthmake {

const automation::Interface& Settings::Describe() {
  static const automation::Interface kInterface =
      automation::Declare("Settings", "_Settings", "{6B0A2193-B647-4285-8B0E-DD158E3394C4}",
                          "{76C70A76-96FA-4F9A-8CDD-94943E9F0703}")
          .get<&Settings::VBExe>("VBExe")
          .let<&Settings::SetVBExe>("VBExe")
          .get<&Settings::SetProjectCompatible>("SetProjectCompatible", {},
                                                "Automatically brake compatibility")
          .let<&Settings::SetSetProjectCompatible>("SetProjectCompatible", {},
                                                   "Automatically brake compatibility")
          .get<&Settings::ScriptTimeOut>(
              "ScriptTimeOut", {},
              "Time out for user defined scripts in milliseconds. Set to -1 for no time out.")
          .let<&Settings::SetScriptTimeOut>(
              "ScriptTimeOut", {},
              "Time out for user defined scripts in milliseconds. Set to -1 for no time out.")
          .get<&Settings::UseOriginalVbp>("UseOriginalVbp", {}, "Not in use")
          .let<&Settings::SetUseOriginalVbp>("UseOriginalVbp", {}, "Not in use")
          .get<&Settings::TakeLatestFromVSS>("TakeLatestFromVSS")
          .let<&Settings::SetTakeLatestFromVSS>("TakeLatestFromVSS")
          .get<&Settings::MakeFilesWriteable>("MakeFilesWriteable")
          .let<&Settings::SetMakeFilesWriteable>("MakeFilesWriteable")
          .get<&Settings::AskForMTSPackage>("AskForMTSPackage")
          .let<&Settings::SetAskForMTSPackage>("AskForMTSPackage")
          .get<&Settings::RunScripts>("RunScripts", {}, "Run user defined scripts")
          .let<&Settings::SetRunScripts>("RunScripts", {}, "Run user defined scripts")
          .get<&Settings::CreateReport>("CreateReport")
          .let<&Settings::SetCreateReport>("CreateReport")
          .get<&Settings::BuildReport>("BuildReport")
          .let<&Settings::SetBuildReport>("BuildReport")
          .get<&Settings::IgnoreScriptError>("IgnoreScriptError")
          .let<&Settings::SetIgnoreScriptError>("IgnoreScriptError")
          .method<&Settings::ApplyEdit>("ApplyEdit")
          .method<&Settings::CancelEdit>("CancelEdit")
          .method<&Settings::BeginEdit>("BeginEdit")
          .build();
  return kInterface;
}

}  // namespace hearthmake
