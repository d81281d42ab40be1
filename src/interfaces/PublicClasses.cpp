#include "interfaces/PublicClasses.hpp"

#include <cstdio>

#include "automation/Text.hpp"
#include "build/Build.hpp"
#include "build/Builds.hpp"
#include "build/IReportItem.hpp"
#include "deployment/Enumerations.hpp"
#include "foundation/Settings.hpp"
#include "foundation/mTypes.hpp"
#include "interfaces/Enums.hpp"
#include "project/Enumerations.hpp"
#include "project/Project.hpp"
#include "project/References.hpp"

namespace hearthmake {

namespace {

constexpr Library kLibrary = {"Hearthmake", "Hearthmake Business objects",
                              "{48440E24-4B05-4406-A20A-2845BB294865}", 1, 0};

template <class T>
automation::Ref<automation::Object> Create() {
  return automation::Make<T>();
}

constexpr PublicClass kClasses[] = {
    {&Build::Describe, &Create<Build>},  // the root object
    {&Builds::Describe, &Create<Builds>},
    {&Projects::Describe, nullptr},
    {&Project::Describe, &Create<Project>},
    {&SettingNames::Describe, nullptr},
    {&References::Describe, nullptr},
    {&Reference::Describe, nullptr},
    {&SSProjects::Describe, nullptr},
    {&SSProject::Describe, nullptr},
    {&Scripts::Describe, nullptr},
    {&MTSPackages::Describe, nullptr},
    {&MTSPackage::Describe, nullptr},
    {&COMApplications::Describe, nullptr},
    {&COMApplication::Describe, nullptr},
    {&Settings::Describe, &Create<Settings>},
    {&IReportItem::Describe, &Create<IReportItem>},
    {&Enums::Describe, &Create<Enums>},
};

}  // namespace

const Library& PublicLibrary() { return kLibrary; }

std::string CoclassId(const automation::Interface& declared) {
  if (!declared.ClassId().empty()) return declared.ClassId();
  std::string id = declared.InterfaceId();
  const auto first = static_cast<std::uint32_t>(std::stoul(id.substr(1, 8), nullptr, 16));
  char text[9];
  std::snprintf(text, sizeof text, "%08X", static_cast<unsigned>(first + 1));
  return id.replace(1, 8, text);
}

std::span<const PublicClass> PublicClasses() { return kClasses; }

std::span<const automation::Enumeration* const> PublicEnumerations() {
  static const automation::Enumeration* const kEnumerations[] = {
      &DescribeEnumeration(BuildScripts{}),
      &DescribeEnumeration(ReferenceTypes{}),
      &DescribeEnumeration(ProjectTypes{}),
      &DescribeEnumeration(CompatibleModes{}),
      &DescribeEnumeration(CompilationTypes{}),
      &DescribeEnumeration(OptimizationTypes{}),
      &DescribeEnumeration(ThreadingModels{}),
      &DescribeEnumeration(StartModes{}),
      &DescribeEnumeration(AutenticationLevels{}),
      &DescribeEnumeration(ImpersonationLevels{}),
      &DescribeEnumeration(COMApplicationExportOptions{}),
      &DescribeEnumeration(automation::BuildErrors{}),
  };
  return kEnumerations;
}

const PublicClass* FindCreatableClass(std::string_view progId) {
  const std::string_view library = kLibrary.name;
  const auto dot = progId.find('.');
  if (dot == std::string_view::npos) return nullptr;
  if (!automation::EqualsIgnoreCaseAscii(progId.substr(0, dot), library)) return nullptr;
  const std::string_view name = progId.substr(dot + 1);
  for (const PublicClass& entry : kClasses) {
    if (automation::EqualsIgnoreCaseAscii(entry.describe().Name(), name))
      return entry.create != nullptr ? &entry : nullptr;
  }
  return nullptr;
}

}  // namespace hearthmake
