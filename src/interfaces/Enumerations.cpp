#include "project/Enumerations.hpp"
#include "scripting/Scripts.hpp"

namespace hearthmake {

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

}  // namespace hearthmake
