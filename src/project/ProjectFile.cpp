// Project: reading its project file and bringing it up to date.

#include <algorithm>
#include <array>
#include <string_view>

#include "automation/Error.hpp"
#include "automation/Joined.hpp"
#include "automation/Text.hpp"
#include "build/Projects.hpp"
#include "foundation/Paths.hpp"
#include "project/Project.hpp"

namespace hearthmake {

namespace {

using automation::Joined;

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::array<std::string_view, 2> kReferenceKeys = {"Reference=", "Object="};

// Settings that stay as the file has them.
bool IsLeftAlone(const clVBProject& project, Setting setting) {
  if (setting == Setting::RevisionVer) return project.Stored(Setting::AutoIncrementVer) == "1";
  if (setting != Setting::ThreadingModel) return false;
  const std::string type = automation::Lower(project.Stored(Setting::ProjectType));
  return type != "oledll" && type != "control";
}

// clFile never edits the first row of a file, which a project file's type row is meant for. Where another
// row comes first, an empty one is put in front for as long as rows are being edited.
class FirstRowGuard {
 public:
  explicit FirstRowGuard(clFile& file) : m_file(file), m_isNeeded(file.InFile("Type=") != 1) {
    if (m_isNeeded) m_file.SetContent(std::string(kLineEnd) + m_file.Content());
  }
  FirstRowGuard(const FirstRowGuard&) = delete;
  FirstRowGuard& operator=(const FirstRowGuard&) = delete;
  ~FirstRowGuard() {
    if (m_isNeeded) m_file.SetContent(m_file.Content().substr(kLineEnd.size()));
  }

 private:
  clFile& m_file;
  bool m_isNeeded;
};

// Rows of a file that begin with a key, in file order, without their line ends.
template <class Text>
void CollectRows(std::string_view content, std::string_view key, std::vector<Text>& rows) {
  std::size_t hit = content.find(key);
  while (hit != std::string_view::npos) {
    const std::size_t end = std::min(content.find(kLineEnd, hit), content.size());
    const bool beginsRow = hit == 0 || content.substr(0, hit).ends_with(kLineEnd);
    if (beginsRow) rows.emplace_back(content.substr(hit, end - hit));
    hit = content.find(key, end);
  }
}

// Whether a row names a file: as a whole name, in any case, with or without a folder in front of it.
bool NamesFile(std::string_view row, const std::string& name) {
  if (name.empty()) return false;
  const std::string text = automation::Lower(row);
  const std::string wanted = automation::Lower(name);
  for (std::size_t hit = text.find(wanted); hit != std::string::npos; hit = text.find(wanted, hit + 1)) {
    const std::string_view before = std::string_view(text).substr(0, hit);
    const std::string_view behind = std::string_view(text).substr(hit + wanted.size());
    const bool begins = before.ends_with('\\') || before.ends_with('#') || before.ends_with(';') ||
                        before.ends_with("; ") || before.ends_with("=*\\a");
    // A resource number or the description may follow.
    if (begins && (behind.empty() || behind.front() == '#' || behind.front() == '\\')) return true;
  }
  return false;
}

// The first reference row that names one of the files, in the order of the names; a part of the content,
// empty when there is none.
std::string_view FindReferenceRow(const std::string& content, const std::array<std::string, 3>& names) {
  std::vector<std::string_view> rows;
  for (const std::string_view key : kReferenceKeys) CollectRows(content, key, rows);
  std::sort(rows.begin(), rows.end(),
            [](std::string_view a, std::string_view b) { return a.data() < b.data(); });
  for (const std::string& name : names) {
    for (const std::string_view row : rows) {
      if (NamesFile(row, name)) return row;
    }
  }
  return {};
}

}  // namespace

void Project::OpenExisting() {
  if (!m_file.Exists()) {
    automation::Raise(automation::RuntimeError::FileNotFound, "Project.LoadFromFile", m_file.PathName());
  }
  m_file.OpenFile();
}

void Project::LoadFromFile(const std::string& strVBPFile) {
  constexpr const char* kSource = "Project.LoadFromFile";
  if (!automation::EqualsIgnoreCaseAscii(automation::Right(strVBPFile, 3), "vbp")) {
    automation::Raise(automation::kInvalidValue, kSource, "File is not a vbp file");
  }
  const std::string previousName = Name();
  clFile file;
  file.SetFile(strVBPFile);
  std::swap(m_file, file);
  try {
    OpenExisting();
  } catch (...) {
    std::swap(m_file, file);  // a project stays what it was when the new file can't be read
    throw;
  }
  FilesChanged();
  try {
    m_vbProject.Read(m_file);
    ProjectType();  // raises for a file that is no project of the four kinds
    GetReferencesFromVBP();
  } catch (...) {
    m_file.DropContent();  // a later update must not write back what was read here
    throw;
  }
  if (Name() == previousName || m_parent == nullptr) return;
  m_parent->RefuseDuplicateName(*this);
  m_parent->Renamed(*this);
}

void Project::GetReferencesFromVBP() {
  if (!m_file.FileIsOpen()) OpenExisting();
  const std::vector<std::string> rows = ReferenceRows();
  m_file.DropContent();
  m_references->Detect(rows);
}

std::vector<std::string> Project::ReferenceRows() const {
  const std::string content = m_file.Content();
  std::vector<std::string> rows;
  for (const std::string_view key : kReferenceKeys) CollectRows(content, key, rows);
  return rows;
}

void Project::UpdateVBP() {
  try {
    OpenExisting();
    WriteReferences();
    WriteSettings();
    m_file.Save();
    m_file.DropContent();
  } catch (const automation::Error& error) {
    m_file.DropContent();
    automation::Raise(automation::kInvalidValue, "Project.UpdateVBP",
                      "Update failed for project " + Name() + " " + error.Description());
  }
}

void Project::WriteReferences() {
  const KeyedCollection<Reference>& references = m_references->List();
  if (references.Count() == 0) return;
  // Every row is made before the first is removed: making one reads the referenced binary, and may fail.
  std::vector<std::string> rows;
  rows.reserve(references.Count());
  for (std::size_t i = 0; i < references.Count(); ++i) rows.push_back(ReferenceRow(references.At(i)));
  // Each row is put behind the type's, so that the last one comes first.
  std::reverse(rows.begin(), rows.end());
  if (m_file.InFile("Type=") == 1 && m_file.PutRowsBehindFirst(rows, kReferenceKeys)) return;
  const FirstRowGuard firstRow(m_file);
  // clFile leaves the last character of a row that no line end ends.
  for (const std::string_view key : kReferenceKeys) m_file.EndLastRow(key);
  RemoveReferenceRows();
  for (auto row = rows.rbegin(); row != rows.rend(); ++row) m_file.InsertNewRow(*row, "Type=", false);
}

void Project::RemoveReferenceRows() {
  for (const std::string_view key : kReferenceKeys) {
    while (m_file.InFile(key) != 0) {
      std::int32_t position = 1;
      m_file.RemoveRow(key, position);
    }
  }
}

std::string Project::ReferenceRow(const Reference& reference) const {
  if (reference.IsExternal()) return reference.ReferenceString();
  return LibraryRow(ParentProjects().ById(reference.ReferencedProject()));
}

std::string Project::LibraryRow(Project& referenced) {
  const LibraryIdentity& library = referenced.Identity();
  if (referenced.ProjectType() == ProjectTypes::UserControl) {
    return Joined({"Object={", library.guid, "}#", library.version, "#0; ", referenced.ExeName32()});
  }
  return Joined({"Reference=*\\G{", library.guid, "}#", library.version, "#0#", referenced.BinaryPath(), "#",
                 referenced.QuotedText(Setting::Title)});
}

// A control is always an object row; a project that is in the group is named by its file.
std::string Project::GroupReferenceRow(Project& referenced) const {
  const bool byFile = referenced.ProjectType() != ProjectTypes::UserControl && referenced.CompileMe();
  if (byFile) return "Reference=*\\A" + RelativePath(ProjectPath(), referenced.ProjectPath());
  return LibraryRow(referenced);
}

void Project::FixReferencesInProjectGroup() {
  OpenExisting();
  std::string content = m_file.Content();
  for (const auto& reference : m_references->Items()) {
    if (reference->IsExternal()) continue;
    Project& referenced = ParentProjects().ById(reference->ReferencedProject());
    const std::string_view row =
        FindReferenceRow(content, {referenced.ExeName32(), automation::ToText(referenced.ProjectFileName()),
                                   referenced.Name() + ".vbp"});
    if (row.empty()) continue;
    try {
      content.replace(static_cast<std::size_t>(row.data() - content.data()), row.size(),
                      GroupReferenceRow(referenced));
    } catch (const automation::Error&) {
      // Its binary can't be read: the row stays as it is.
    }
  }
  m_file.SetContent(content);
  m_file.Save();
  m_file.DropContent();
}

void Project::WriteSettings() {
  const FirstRowGuard guard(m_file);
  m_vbProject.Write(m_file, &IsLeftAlone);
}

}  // namespace hearthmake
