#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "automation/Object.hpp"
#include "automation/Variant.hpp"
#include "deployment/PackageRecord.hpp"
#include "platform/CatalogCollection.hpp"

namespace hearthmake {

class Build;
class PackageDefinitions;
class Project;

// What the errors of a class name as their source.
struct PackageErrorSources {
  const char* name;
  const char* beginEdit;
  const char* cancelEdit;
  const char* save;
};

// One row of table MTSPackages: what a component catalog gets of a build, and which projects go there (those
// whose MtsPackageId is its Id). The common part of MTSPackage and COMApplication, which read the same rows.
class PackageDefinition : public automation::Object {
 public:
  // Brings the definition into the catalog of this machine. False when something failed, which the build's
  // event MTSEvent told then ("Error occured: " and the description); what was done before stays done.
  bool CreatePackage();

  // Name in the catalog, up to 50 characters, not blank (error 45, "Name can't be an empty string!").
  std::string Name() const { return m_record.name.Get(); }
  void SetName(const std::string& value);
  // The account that the components run as, up to 50 characters; empty for the user who is logged on.
  std::string User() const { return m_record.user.Get(); }
  void SetUser(const std::string& value) { Assign(m_record.user, value); }
  // Of the account; up to 50 characters.
  std::string Password() const { return m_record.password.Get(); }
  void SetPassword(const std::string& value) { Assign(m_record.password, value); }
  // Up to 255 characters.
  std::string Description() const { return m_record.description.Get(); }
  void SetDescription(const std::string& value) { Assign(m_record.description, value); }
  // Keeps the server process when it is idle.
  bool LeaveRunningIdle() const { return m_record.leaveRunningIdle; }
  void SetLeaveRunningIdle(bool value) { Assign(m_record.leaveRunningIdle, value); }
  // Minutes of idle time before the server process ends.
  std::int32_t Shutdowntime() const { return m_record.shutdowntime; }
  void SetShutdowntime(std::int32_t value) { Assign(m_record.shutdowntime, value); }
  // Protection against deletion and changes in the catalog.
  bool DisableDelete() const { return m_record.disableDelete; }
  void SetDisableDelete(bool value) { Assign(m_record.disableDelete, value); }
  bool DisableChanges() const { return m_record.disableChanges; }
  void SetDisableChanges(bool value) { Assign(m_record.disableChanges, value); }
  // Runs in the caller's process.
  bool LibraryPackage() const { return m_record.libraryPackage; }
  void SetLibraryPackage(bool value) { Assign(m_record.libraryPackage, value); }
  // The file to export to, up to 255 characters; empty for no export.
  std::string ExportPath() const { return m_record.exportPath.Get(); }
  void SetExportPath(const std::string& value) { Assign(m_record.exportPath, value); }
  // Key of the row; 0 until first saved.
  std::int32_t Id() const { return m_record.id; }
  // CreateAllPackages passes over this one. Not stored.
  bool Skip() const { return m_isSkipped; }
  void SetSkip(bool value) { m_isSkipped = value; }

  // The edit cycle: errors 1004, "Already in edit mode" (source of BeginEdit) and "Not in edit mode" (source
  // of CancelEdit for all three others). ApplyEdit refuses an empty name as SetName does and a deletion while
  // a project uses the row (error 45, "This package is used by one or many projects and can't be deleted!").
  void BeginEdit();
  void ApplyEdit();
  void Delete();
  void CancelEdit();

  // For the collection.
  void AttachTo(PackageDefinitions* parent);
  // Null for one that was taken out, or whose collection was released.
  PackageDefinitions* ParentOrNull() const { return m_parent; }
  void LoadFromRow(const platform::Recordset& row);

 protected:
  // The sources outlive the object.
  explicit PackageDefinition(const PackageErrorSources& sources) : m_sources(sources) {}

  const PackageRecord& Record() const { return m_record; }
  template <class T, class V>
  void Assign(T& field, const V& value) {
    field = value;
    m_record.dirty = true;
  }
  void SetAutenticationColumn(std::int32_t value) { Assign(m_record.autentication, value); }

  // What CreatePackage does; every error may leave it.
  virtual void Deploy() = 0;
  // The columns that only the class itself has.
  virtual void LoadOwn(const platform::Recordset& /*row*/) {}
  virtual void StoreOwn(platform::Recordset& /*row*/) const {}
  virtual void KeepOwn() {}
  virtual void RestoreOwn() {}

  Build& ParentBuild() const;
  // The build's event MTSEvent; that a host wants to cancel has no effect.
  void Tell(const std::string& strInfo) const;
  // Calls install for each project that goes into this definition, in list order, after telling of it:
  // "Adding component ", the project's name and where it goes.
  void InstallProjects(const std::string& where, const std::function<void(Project&)>& install) const;
  // The position, from 1, of the first object of exactly this definition's name; 0 when there is none.
  std::int32_t PositionIn(platform::CatalogCollection& collection) const;
  // The values that both kinds of catalog object have, in their order.
  void SetCommonValues(platform::CatalogObject& object) const;
  void SetIdentity(platform::CatalogObject& object) const;

 private:
  void RequireEditMode() const;
  void Save();
  void DeleteRow();

  const PackageErrorSources& m_sources;
  PackageDefinitions* m_parent = nullptr;
  PackageRecord m_record;
  std::optional<PackageRecord> m_snapshot;  // while editing
  bool m_isNew = true;
  bool m_isDeleted = false;
  bool m_isSkipped = false;
};

// As catalogs write a yes or no.
automation::Variant YesOrNo(bool value);

// Tells of an error that ended a deployment: "Error occured: " and its description.
void TellOfError(Build& build, const std::string& description);

}  // namespace hearthmake
