#pragma once

#include <array>
#include <memory>
#include <string>
#include <string_view>

#include "foundation/clFile.hpp"
#include "foundation/mTypes.hpp"
#include "platform/Database.hpp"

namespace hearthmake {

// The settings of a project file as a record of fixed-width texts, exactly as the file has them, double
// quotes included.
class clVBProject {
 public:
  // Trimmed. DllBaseAddress reads as &H11000000 while its field holds no number.
  std::string Get(Setting setting) const;
  // The field itself, for the file and the table: a default that nobody set is not written there.
  const std::string& Stored(Setting setting) const { return m_values[static_cast<std::size_t>(setting)]; }
  // Cuts at the field's width and marks the record dirty.
  void Let(Setting setting, std::string_view value);

  // The edit cycle; BeginEdit twice is error 1004, source "Project.BeginEdit", "Already in edit mode".
  void BeginEdit();
  void ApplyEdit();
  void CancelEdit();
  bool IsDirty() const { return m_dirty; }
  void SetClean() { m_dirty = false; }

  // The 43 columns of the current row of a Project recordset.
  void Load(const platform::Recordset& row);
  void Save(platform::Recordset& row) const;

  // Reads each setting from an open file: the text behind the first occurrence of its key and equals
  // sign anywhere in the file, so that a longer key that comes first lends its value.
  void Read(const clFile& file);
  // Rewrites the rows of all settings but the type, each in the first row that holds its key, and adds
  // those that are missing, or lost their row to a shorter key, before the first section. skip says which
  // settings are left alone.
  void Write(clFile& file, bool (*skip)(const clVBProject&, Setting)) const;

 private:
  using Values = std::array<std::string, kSettingCount>;

  void Assign(Setting setting, std::string_view value);

  Values m_values;
  std::unique_ptr<Values> m_snapshot;  // made by the first change while editing
  bool m_isEditing = false;
  bool m_dirty = false;
};

}  // namespace hearthmake
