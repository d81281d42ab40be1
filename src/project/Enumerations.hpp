#pragma once

#include <cstdint>

#include "automation/Interface.hpp"

namespace hearthmake {

enum class ProjectTypes : std::int32_t { StandardExe = 0, ActiveXDll = 1, ActiveXExe = 2, UserControl = 3 };
enum class CompatibleModes : std::int32_t {
  NoCompatibility = 0,
  ProjectCompatibility = 1,
  BinaryCompatibility = 2
};
enum class CompilationTypes : std::int32_t { NativeCode = 0, PCode = -1 };
enum class OptimizationTypes : std::int32_t { FastCode = 0, SmallCode = 1, NoOptimization = 2 };
enum class ThreadingModels : std::int32_t { SingleThreaded = 0, ApartmentThreaded = 1 };
enum class StartModes : std::int32_t { StandAlone = 0, ActiveXComponent = 1 };
enum class ReferenceTypes : std::int32_t { RT_UNDEFINED = 0, RT_OBJECT = 1, RT_REFERENCE = 2 };

// The declarations of these enumerations, as hosts see them.
const automation::Enumeration& DescribeEnumeration(ProjectTypes);
const automation::Enumeration& DescribeEnumeration(CompatibleModes);
const automation::Enumeration& DescribeEnumeration(CompilationTypes);
const automation::Enumeration& DescribeEnumeration(OptimizationTypes);
const automation::Enumeration& DescribeEnumeration(ThreadingModels);
const automation::Enumeration& DescribeEnumeration(StartModes);
const automation::Enumeration& DescribeEnumeration(ReferenceTypes);

}  // namespace hearthmake
