#pragma once

#include <cstdint>

#include "automation/FixedText.hpp"
#include "platform/Database.hpp"

namespace hearthmake {

// The columns of table MTSPackages that a package and an application share; what CancelEdit restores.
struct PackageRecord {
  static constexpr std::int32_t kDefaultShutdowntime = 3;

  // The current row. A null Shutdowntime is that of a new definition.
  static PackageRecord FromRow(const platform::Recordset& row);
  void Store(platform::Recordset& row, std::int32_t idBuild) const;

  automation::FixedText<50> name;
  automation::FixedText<50> user;
  automation::FixedText<50> password;
  automation::FixedText<255> description;
  // A yes/no to a package (-1 and 0), a level to an application; the spelling is the column's.
  std::int32_t autentication = 0;
  bool leaveRunningIdle = false;
  std::int32_t shutdowntime = kDefaultShutdowntime;
  bool disableDelete = false;
  bool disableChanges = false;
  bool libraryPackage = false;
  automation::FixedText<255> exportPath;
  std::int32_t id = 0;
  bool dirty = false;
};

// A number, or another one where the column is null.
std::int32_t LongOr(const platform::Recordset& row, const char* column, std::int32_t ofNull);

}  // namespace hearthmake
