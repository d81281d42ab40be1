#include "project/clVBProject.hpp"

#include "automation/Error.hpp"
#include "automation/Text.hpp"

namespace hearthmake {

namespace {

constexpr const char* kDefaultBaseAddress = "&H11000000";

// Whether a row could be found by the marker of another one. A marker ends in its only equals sign.
bool HoldsOtherMarker(std::string_view text, std::string_view own,
                      const std::vector<clFile::ExpectedRow>& rows) {
  for (std::size_t equals = text.find('='); equals != std::string_view::npos;
       equals = text.find('=', equals + 1)) {
    const std::string_view key = text.substr(0, equals + 1);
    for (const clFile::ExpectedRow& row : rows) {
      if (key.ends_with(row.marker) && row.marker != own) return true;
    }
  }
  return false;
}

// The short way through a file whose rows are all as they should be, but for some that are missing: these
// are added. False, with nothing done, when it is not so, or when a new row could be taken for another's.
bool AddMissingRows(clFile& file, const std::vector<clFile::ExpectedRow>& rows) {
  const auto missing = file.MissingRows(rows);
  if (!missing) return false;
  std::vector<std::string> texts;
  for (const std::size_t i : *missing) {
    std::string text = std::string(rows[i].marker).append(rows[i].value);
    if (HoldsOtherMarker(text, rows[i].marker, rows)) return false;
    texts.push_back(std::move(text));
  }
  for (const std::string& text : texts) file.InsertNewRow(text, "[", true);
  return true;
}

}  // namespace

std::string clVBProject::Get(Setting setting) const {
  const std::string& value = Stored(setting);
  if (setting == Setting::DllBaseAddress && automation::Val(value) == 0) return kDefaultBaseAddress;
  return value;
}

void clVBProject::Assign(Setting setting, std::string_view value) {
  if (m_isEditing && !m_snapshot) m_snapshot = std::make_unique<Values>(m_values);
  m_values[static_cast<std::size_t>(setting)] =
      automation::Trim(automation::Left(value, InfoOf(setting).width));
}

void clVBProject::Let(Setting setting, std::string_view value) {
  Assign(setting, value);
  m_dirty = true;
}

void clVBProject::BeginEdit() {
  if (m_isEditing) automation::Raise(automation::kEditCycle, "Project.BeginEdit", "Already in edit mode");
  m_dirty = false;
  m_isEditing = true;
}

void clVBProject::ApplyEdit() {
  m_isEditing = false;
  m_snapshot.reset();
  m_dirty = false;
}

void clVBProject::CancelEdit() {
  if (m_snapshot) m_values = std::move(*m_snapshot);
  ApplyEdit();
}

void clVBProject::Load(const platform::Recordset& row) {
  for (const SettingInfo& info : AllSettings()) Assign(info.setting, row.GetText(info.name));
  m_dirty = false;
}

void clVBProject::Save(platform::Recordset& row) const {
  for (const SettingInfo& info : AllSettings()) row.SetText(info.name, Stored(info.setting));
}

void clVBProject::Read(const clFile& file) {
  for (const SettingInfo& info : AllSettings()) {
    std::int32_t position = 1;
    Let(info.setting, file.GetText(info.marker, "\r\n", position));
  }
}

void clVBProject::Write(clFile& file, bool (*skip)(const clVBProject&, Setting)) const {
  const auto isWritten = [&](Setting setting) {
    return setting != Setting::ProjectType && !Stored(setting).empty() && !skip(*this, setting);
  };
  const auto rowOf = [&](const SettingInfo& info) { return std::string(info.marker) + Stored(info.setting); };
  std::vector<clFile::ExpectedRow> rows;
  rows.reserve(kSettingCount);
  for (const SettingInfo& info : AllSettings()) {
    if (isWritten(info.setting)) rows.push_back({info.marker, Stored(info.setting)});
  }
  if (AddMissingRows(file, rows)) return;
  for (const SettingInfo& info : AllSettings()) {
    if (!isWritten(info.setting)) continue;
    std::int32_t position = 1;
    file.ReplaceRow(info.marker, rowOf(info), position);
    if (position == 0) file.InsertNewRow(rowOf(info), "[", true);
  }
  // A description that finds the file description's row first has been written over it. The compiler is
  // to see both.
  for (const SettingInfo& info : AllSettings()) {
    if (isWritten(info.setting) && file.InFile(info.marker) == 0) file.InsertNewRow(rowOf(info), "[", true);
  }
}

}  // namespace hearthmake
