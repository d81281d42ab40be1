#include "deployment/Enumerations.hpp"
#include "automation/Error.hpp"
#include "project/Enumerations.hpp"
#include "scripting/Scripts.hpp"

namespace hearthmake {

namespace {

constexpr std::int32_t Number(automation::BuildErrors error) { return static_cast<std::int32_t>(error); }

}  // namespace

const automation::Enumeration& DescribeEnumeration(ProjectTypes) {
  static const automation::Enumeration kEnumeration = {
      "ProjectTypes",
      "{E1283105-D35B-4673-81B3-339D1E999B9F}",
      {{"StandardExe", 0}, {"ActiveXDll", 1}, {"ActiveXExe", 2}, {"UserControl", 3}}};
  return kEnumeration;
}

const automation::Enumeration& DescribeEnumeration(CompatibleModes) {
  static const automation::Enumeration kEnumeration = {
      "CompatibleModes",
      "{4802FF53-FE35-4DBC-9A5F-EB7835D9C544}",
      {{"NoCompatibility", 0}, {"ProjectCompatibility", 1}, {"BinaryCompatibility", 2}}};
  return kEnumeration;
}

const automation::Enumeration& DescribeEnumeration(CompilationTypes) {
  static const automation::Enumeration kEnumeration = {
      "CompilationTypes", "{FD1A6810-CC3E-47CF-B2E3-89B733CDA7E5}", {{"NativeCode", 0}, {"PCode", -1}}};
  return kEnumeration;
}

const automation::Enumeration& DescribeEnumeration(OptimizationTypes) {
  static const automation::Enumeration kEnumeration = {
      "OptimizationTypes",
      "{4659CDB8-593B-486B-870F-F0F323C81A8C}",
      {{"FastCode", 0}, {"SmallCode", 1}, {"NoOptimization", 2}}};
  return kEnumeration;
}

const automation::Enumeration& DescribeEnumeration(ThreadingModels) {
  static const automation::Enumeration kEnumeration = {"ThreadingModels",
                                                       "{1B81AFEC-00FB-4F2F-BBF0-4B0A00111777}",
                                                       {{"SingleThreaded", 0}, {"ApartmentThreaded", 1}}};
  return kEnumeration;
}

const automation::Enumeration& DescribeEnumeration(StartModes) {
  static const automation::Enumeration kEnumeration = {
      "StartModes", "{E8B8E9CE-5E73-4D7F-BCAB-B6894D132C86}", {{"StandAlone", 0}, {"ActiveXComponent", 1}}};
  return kEnumeration;
}

const automation::Enumeration& DescribeEnumeration(ReferenceTypes) {
  static const automation::Enumeration kEnumeration = {
      "ReferenceTypes",
      "{E60759B0-F451-408C-9220-ED716269AA66}",
      {{"RT_UNDEFINED", 0}, {"RT_OBJECT", 1}, {"RT_REFERENCE", 2}}};
  return kEnumeration;
}

const automation::Enumeration& DescribeEnumeration(BuildScripts) {
  static const automation::Enumeration kEnumeration = {"BuildScripts",
                                                       "{62B466D4-C47D-4FDC-A417-844C2A7DC236}",
                                                       {{"BS_BEFORESOURCESAFE", 0},
                                                        {"BS_BEFORECOMPILE", 1},
                                                        {"BS_BEFORE_PROJECT_COMPILE", 2},
                                                        {"BS_AFTER_PROJECT_COMPILE", 3},
                                                        {"BS_BUILDFAILED", 4},
                                                        {"BS_BUILDCOMPLETE", 5},
                                                        {"BS_AFTERMTS", 6}}};
  return kEnumeration;
}

const automation::Enumeration& DescribeEnumeration(AutenticationLevels) {
  static const automation::Enumeration kEnumeration = {"AutenticationLevels",
                                                       "{1B67AC03-2E67-4196-B092-D90F9F7CF21D}",
                                                       {{"None", 1},
                                                        {"Connect", 2},
                                                        {"CallLevel", 3},
                                                        {"Package", 4},
                                                        {"PackageIntegrety", 5},
                                                        {"PackagePrivacy", 6}}};
  return kEnumeration;
}

const automation::Enumeration& DescribeEnumeration(ImpersonationLevels) {
  static const automation::Enumeration kEnumeration = {
      "ImpersonationLevels",
      "{0FC8C7E9-D5D7-4959-A647-25EB44C1909B}",
      {{"Anonymous", 1}, {"Identity", 2}, {"Impersonate", 3}, {"Delegate", 4}}};
  return kEnumeration;
}

const automation::Enumeration& DescribeEnumeration(COMApplicationExportOptions) {
  static const automation::Enumeration kEnumeration = {
      "COMApplicationExportOptions",
      "{561F34A7-FE93-433A-B1A9-365555026A19}",
      {{"ExportApplication", 0}, {"ExportRoles", 1}, {"ExportProxy", 2}}};
  return kEnumeration;
}

// Each number stands once, beside its name in the code.
const automation::Enumeration& automation::DescribeEnumeration(automation::BuildErrors) {
  static const automation::Enumeration kEnumeration = {
      "BuildErrors",
      "{FA53790A-7F89-46A5-B41F-BE9CE2C32FB9}",
      {{"be_FailToCompile", Number(automation::BuildErrors::be_FailToCompile)},
       {"beInvalidReference", Number(automation::BuildErrors::beInvalidReference)},
       {"beCyclicReferences", Number(automation::BuildErrors::beCyclicReferences)},
       {"beCanNotDelete", Number(automation::BuildErrors::beCanNotDelete)},
       {"beProjectIsReferenced", Number(automation::BuildErrors::beProjectIsReferenced)},
       {"beProjectAlreadyInBuild", Number(automation::BuildErrors::beProjectAlreadyInBuild)},
       {"beCommandLineToLong", Number(automation::BuildErrors::beCommandLineToLong)},
       {"beBuildCanNotDelete", Number(automation::BuildErrors::beBuildCanNotDelete)},
       {"beFailedToStartProcess", Number(automation::BuildErrors::beFailedToStartProcess)},
       {"beNoProcessStarted", Number(automation::BuildErrors::beNoProcessStarted)},
       {"beGUIDmissing", Number(automation::BuildErrors::beGUIDmissing)},
       {"beInvalidBaseAddress", Number(automation::BuildErrors::beInvalidBaseAddress)},
       {"beEvaluateInternalsFaild", Number(automation::BuildErrors::beEvaluateInternalsFaild)},
       {"beScriptSyntaxError", Number(automation::BuildErrors::beScriptSyntaxError)},
       {"bePrepareScriptControl", Number(automation::BuildErrors::bePrepareScriptControl)},
       {"be_BuildNotFound", Number(automation::BuildErrors::be_BuildNotFound)},
       {"be_InvalidReferenceString", Number(automation::BuildErrors::be_InvalidReferenceString)},
       {"beNoDatabase", Number(automation::BuildErrors::beNoDatabase)},
       {"beOpenIncludeFile", Number(automation::BuildErrors::beOpenIncludeFile)},
       {"beScriptIsExecuting", Number(automation::BuildErrors::beScriptIsExecuting)},
       {"beScriptRunning", Number(automation::BuildErrors::beScriptRunning)}}};
  return kEnumeration;
}

}  // namespace hearthmake
