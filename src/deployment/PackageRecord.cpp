#include "deployment/PackageRecord.hpp"

namespace hearthmake {

std::int32_t LongOr(const platform::Recordset& row, const char* column, std::int32_t ofNull) {
  return row.IsNull(column) ? ofNull : row.GetLong(column);
}

PackageRecord PackageRecord::FromRow(const platform::Recordset& row) {
  PackageRecord record;
  record.name = row.GetText("Name");
  record.user = row.GetText("User");
  record.password = row.GetText("Password");
  record.description = row.GetText("Description");
  record.autentication = row.GetLong("Autentication");
  record.leaveRunningIdle = row.GetBoolean("LeaveRunningIdle");
  record.shutdowntime = LongOr(row, "Shutdowntime", kDefaultShutdowntime);
  record.disableDelete = row.GetBoolean("DisableDelete");
  record.disableChanges = row.GetBoolean("DisableChanges");
  record.libraryPackage = row.GetBoolean("LibraryPackage");
  record.exportPath = row.GetText("ExportFile");
  record.id = row.GetLong("Id");
  return record;
}

void PackageRecord::Store(platform::Recordset& row, std::int32_t idBuild) const {
  row.SetText("Name", name.Get());
  row.SetText("User", user.Get());
  row.SetText("Description", description.Get());
  row.SetText("Password", password.Get());
  row.SetLong("Autentication", autentication);
  row.SetBoolean("LeaveRunningIdle", leaveRunningIdle);
  row.SetLong("Shutdowntime", shutdowntime);
  row.SetBoolean("DisableDelete", disableDelete);
  row.SetBoolean("DisableChanges", disableChanges);
  row.SetBoolean("LibraryPackage", libraryPackage);
  row.SetLong("idBuild", idBuild);
  row.SetText("ExportFile", exportPath.Get());
}

}  // namespace hearthmake
