#pragma once

#include <cstdint>

#include "automation/Interface.hpp"

namespace hearthmake {

// The levels and options of component services, with the interface's own spellings.
enum class AutenticationLevels : std::int32_t {
  None = 1,
  Connect = 2,
  CallLevel = 3,
  Package = 4,
  PackageIntegrety = 5,
  PackagePrivacy = 6,
};
enum class ImpersonationLevels : std::int32_t { Anonymous = 1, Identity = 2, Impersonate = 3, Delegate = 4 };
enum class COMApplicationExportOptions : std::int32_t {
  ExportApplication = 0,
  ExportRoles = 1,
  ExportProxy = 2,
};

const automation::Enumeration& DescribeEnumeration(AutenticationLevels);
const automation::Enumeration& DescribeEnumeration(ImpersonationLevels);
const automation::Enumeration& DescribeEnumeration(COMApplicationExportOptions);

}  // namespace hearthmake
