#include "interfaces/PublicClasses.hpp"

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

constexpr std::string_view kLibrary = "Hearthmake.";

template <class T>
automation::Ref<automation::Object> Create() {
  return automation::Make<T>();
}

constexpr PublicClass kClasses[] = {
    {&Build::Describe, &Create<Build>},
    {&Builds::Describe, &Create<Builds>},
    {&Projects::Describe, nullptr},
    {&Project::Describe, &Create<Project>},
    {&SettingNames::Describe, nullptr},
    {&References::Describe, nullptr},
    {&Reference::Describe, nullptr},
    {&SSProjects::Describe, nullptr},
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

const PublicClass* FindPublicClass(std::string_view progId) {
  if (!automation::EqualsIgnoreCaseAscii(progId.substr(0, kLibrary.size()), kLibrary)) return nullptr;
  const std::string_view name = progId.substr(kLibrary.size());
  for (const PublicClass& entry : kClasses) {
    if (automation::EqualsIgnoreCaseAscii(entry.describe().Name(), name)) return &entry;
  }
  return nullptr;
}

}  // namespace hearthmake
