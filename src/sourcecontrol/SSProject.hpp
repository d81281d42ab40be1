#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "automation/FixedText.hpp"
#include "automation/Object.hpp"
#include "build/IReportItem.hpp"
#include "platform/Database.hpp"
#include "platform/SourceControl.hpp"

namespace hearthmake {

class SSProjects;
class SSSession;

// A project of a source-control database from which sources of a build come: the database, whose session
// it takes to open it, the project's path in there and the local folder that its files are worked on in.
//
// Texts have up to 255 characters. The password is stored as it is entered.
class SSProject final : public automation::Object, public ReportItem {
 public:
  static const automation::Interface& Describe();
  const automation::Interface& Declaration() const override { return Describe(); }

  explicit SSProject(SSProjects& parent);

  std::string User() const { return m_record.user.Get(); }
  void SetUser(const std::string& value) { Assign(m_record.user, value); }
  // Path inside the database: "$/Suite/Lib".
  std::string Project() const { return m_record.project.Get(); }
  void SetProject(const std::string& value) { Assign(m_record.project, value); }
  // Empty: the one that the database keeps for the user.
  std::string WorkingFolder() const { return m_record.workingFolder.Get(); }
  void SetWorkingFolder(const std::string& value) { Assign(m_record.workingFolder, value); }
  // Free text about the database.
  std::string Database() const { return m_record.database.Get(); }
  void SetDatabase(const std::string& value) { Assign(m_record.database, value); }
  // The ini file (a DOS path) that describes the database.
  std::string SrcSafeIni() const { return m_record.srcSafeIni.Get(); }
  void SetSrcSafeIni(const std::string& value) { Assign(m_record.srcSafeIni, value); }
  std::string Password() const { return m_record.password.Get(); }
  void SetPassword(const std::string& value) { Assign(m_record.password, value); }
  // How files are got: bits of platform::SourceFlags.
  std::int32_t Flags() const { return m_record.flags; }
  void SetFlags(std::int32_t value) { Assign(m_record.flags, value); }
  // Key of the row; 0 until first saved.
  std::int32_t Id() const { return m_id; }
  // The edit cycle. Error 1004: "Already in edit mode", source "SSProject.BeginEdit"; "Not in edit mode",
  // source "SSProject.CancelEdit" for the three others alike. ApplyEdit makes a new project a member of its
  // collection, and takes a deleted one out.
  void BeginEdit();
  void ApplyEdit();
  void Delete();
  void CancelEdit();
  // Passed over when the latest version is taken; never stored.
  bool Skip() const { return m_skip; }
  void SetSkip(bool value) { m_skip = value; }
  // Each opens a session of its own. Errors of the source control reach the caller, as does error 6 for
  // Flags to which no 128 can be added.
  // Gets the latest files; true.
  bool GetLatest();
  // Gets the files of the newest version with this very label. False, and nothing is got, without one.
  bool GetFromLabel(const std::string& strLabel);
  // Puts a label on the project as it is in the database; true.
  bool Label(const std::string& strLabel, const std::string& strComment);

  std::string IReportItem_Name() const override { return Project(); }
  std::string IReportItem_Details() const override { return "\tDatabase: " + Database(); }

  // Who holds which of its files. Errors of the source control.
  std::vector<platform::VSSCheckout> Checkouts() const;

  // For the collection.
  void LoadFromRow(const platform::Recordset& row);
  void AttachTo(SSProjects* parent);
  SSProjects* ParentOrNull() const { return m_parent; }
  // The project in its database.
  std::unique_ptr<platform::VSSItem> OpenItem(SSSession& session) const;
  // Gets the files of the project, as it is now or was in a version, into the working folder.
  void GetFiles(platform::VSSItem& item) const;

 private:
  struct Record {
    automation::FixedText<255> user;
    automation::FixedText<255> project;
    automation::FixedText<255> workingFolder;
    automation::FixedText<255> database;
    automation::FixedText<255> srcSafeIni;
    automation::FixedText<255> password;
    std::int32_t flags = 0;
    bool dirty = false;
  };

  template <class T, class V>
  void Assign(T& field, const V& value) {
    field = value;
    m_record.dirty = true;
  }
  void RequireEditMode() const;
  SSProjects& Parent() const;
  void Save();

  SSProjects* m_parent;  // null once taken out or released
  Record m_record;
  std::optional<Record> m_snapshot;  // while editing
  std::int32_t m_id = 0;
  bool m_skip = false;
  bool m_isNew = true;
  bool m_isDeleted = false;
};

}  // namespace hearthmake
