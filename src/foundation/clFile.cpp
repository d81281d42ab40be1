#include "foundation/clFile.hpp"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

#include "automation/Error.hpp"
#include "automation/Utf.hpp"
#include "foundation/Apartment.hpp"
#include "foundation/Paths.hpp"

namespace hearthmake {

namespace {

using automation::Utf8ToWindows1252;
using automation::Windows1252ToUtf8;

constexpr std::string_view kLineEnd = "\r\n";

// A text as the file's bytes. Most texts are ASCII and serve as they are, without a copy: rows are looked
// up by the hundred for each compile.
class FileBytes {
 public:
  explicit FileBytes(std::string_view text) : m_view(text) {
    if (automation::IsAscii(text)) return;
    m_converted = Utf8ToWindows1252(text);
    m_view = m_converted;
  }
  FileBytes(const FileBytes&) = delete;
  FileBytes& operator=(const FileBytes&) = delete;

  std::string_view View() const { return m_view; }
  std::size_t Size() const { return m_view.size(); }

 private:
  std::string m_converted;
  std::string_view m_view;
};

std::int32_t PositionOf(std::size_t index) { return static_cast<std::int32_t>(index) + 1; }

}  // namespace

std::string clFile::Path() const { return std::string(FolderPart(m_pathName)); }

bool clFile::Exists() const { return Ports().files->FileExists(m_pathName); }

std::string clFile::Name() const { return std::string(FileNamePart(m_pathName)); }

void clFile::SetFile(std::string_view strFile) {
  m_pathName = strFile;
  ForgetRead();
}

void clFile::OpenFile() {
  if (m_isOpen) return;
  m_content = Ports().files->ReadOrCreate(m_pathName);
  // Positions are 32-bit; a file beyond that is none of the VB world.
  if (m_content.size() >= static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max())) {
    m_content.clear();
    automation::Raise(automation::RuntimeError::OutOfMemory, "clFile.OpenFile", m_pathName);
  }
  m_read.reset();
  m_isUnedited = true;
  m_isOpen = true;
}

// Most files are only looked at, and need no copy.
std::string& clFile::Edit() {
  if (m_isUnedited) m_read = m_content;
  m_isUnedited = false;
  return m_content;
}

void clFile::ForgetRead() {
  m_read.reset();
  m_isUnedited = false;
}

void clFile::CloseFile() { m_isOpen = false; }

void clFile::SetAttributes(std::int32_t lnewValue) {
  Ports().files->SetAttributes(m_pathName, static_cast<std::uint32_t>(lnewValue));
}

bool clFile::ReadOnly() const { return (Ports().files->Attributes(m_pathName) & platform::kReadOnly) != 0; }

std::size_t clFile::Find(std::string_view bytes, std::int32_t position) const {
  if (position < 1) automation::Raise(automation::RuntimeError::InvalidProcedureCall, "clFile");
  return m_content.find(bytes, static_cast<std::size_t>(position) - 1);
}

std::string clFile::GetText(std::string_view strStart, std::string_view strStop, std::int32_t& lPos) const {
  if (!m_isOpen) automation::Raise(automation::kInvalidValue, "cFile.GetText", "File is not open");
  const FileBytes start(strStart);
  const std::size_t hit = Find(start.View(), lPos);
  if (hit == std::string::npos) return {};
  const std::size_t begin = hit + start.Size();
  const std::size_t end = m_content.find(FileBytes(strStop).View(), begin);
  if (end == std::string::npos || end <= begin) return {};
  lPos = PositionOf(end);
  return Windows1252ToUtf8(std::string_view(m_content).substr(begin, end - begin));
}

void clFile::PutText(std::string_view strStart, std::string_view strText, std::int32_t lPos) {
  const FileBytes start(strStart);
  const std::size_t hit = Find(start.View(), lPos);
  if (hit == std::string::npos)
    automation::Raise(automation::RuntimeError::InvalidProcedureCall, "clFile.PutText");
  const FileBytes text(strText);
  const std::size_t begin = hit + start.Size();
  const std::size_t count = std::min(text.Size(), m_content.size() - begin);
  Edit().replace(begin, count, text.View().substr(0, count));
}

clFile::Row clFile::FindRow(std::string_view marker, std::int32_t& lngStartPos) const {
  const std::size_t hit = Find(FileBytes(marker).View(), lngStartPos);
  if (hit == std::string::npos) {
    lngStartPos = 0;
    return {};
  }
  Row row;
  row.isFound = true;
  const std::size_t lineEnd = m_content.rfind(kLineEnd, hit);
  // Without a line end in front the row counts from its second character: position 0 plus 2.
  row.start = lineEnd == std::string::npos ? 1 : lineEnd + kLineEnd.size();
  row.end = m_content.find(kLineEnd, row.start);
  lngStartPos = PositionOf(row.start);
  return row;
}

void clFile::ReplaceRow(std::string_view str1, std::string_view str2, std::int32_t& lngStartPos) {
  const Row row = FindRow(str1, lngStartPos);
  if (!row.isFound || row.end == std::string::npos) return;
  Edit().replace(row.start, row.end - row.start, FileBytes(str2).View());
}

void clFile::RemoveRow(std::string_view str1, std::int32_t& lngStartPos) {
  const Row row = FindRow(str1, lngStartPos);
  if (!row.isFound) return;
  if (row.end != std::string::npos) {
    Edit().erase(row.start, row.end + kLineEnd.size() - row.start);
  } else if (row.start < m_content.size()) {
    Edit().erase(row.start, m_content.size() - 1 - row.start);
  }
}

std::string clFile::GetRow(std::string_view str1, std::int32_t& lngStartPos) const {
  const Row row = FindRow(str1, lngStartPos);
  if (!row.isFound || row.end == std::string::npos) return {};
  lngStartPos = PositionOf(row.end) + 1;
  return Windows1252ToUtf8(std::string_view(m_content).substr(row.start, row.end - row.start));
}

std::string clFile::ReadText(std::string_view strFile) {
  return Windows1252ToUtf8(Ports().files->Read(strFile));
}

void clFile::AppendRow(std::string_view row) {
  std::string& content = Edit();
  if (content.ends_with(kLineEnd)) {
    content.append(row).append(kLineEnd);
  } else {
    if (!content.empty()) content.append(kLineEnd);
    content.append(row);
  }
}

void clFile::InsertNewRow(std::string_view strRow, std::string_view strSearch, bool bBefore) {
  const FileBytes row(strRow);
  const std::size_t hit = strSearch.empty() ? std::string::npos : m_content.find(FileBytes(strSearch).View());
  if (hit == std::string::npos) {
    AppendRow(row.View());
    return;
  }
  const std::size_t lineEnd = bBefore ? m_content.rfind(kLineEnd, hit) : m_content.find(kLineEnd, hit);
  if (lineEnd == std::string::npos) {
    Edit().append(kLineEnd).append(row.View());
  } else {
    Edit().insert(lineEnd + kLineEnd.size(), std::string(row.View()).append(kLineEnd));
  }
}

void clFile::Save() {
  CloseFile();
  platform::FileSystem& files = *Ports().files;
  try {
    files.SetAttributes(m_pathName, platform::kNormal);
    // Most files are saved as they were read, and the file is not asked again.
    if (IsAsRead()) return;
  } catch (const automation::Error&) {
    // A file that is missing is made now; one that stays read-only is refused by the writing.
  }
  files.Replace(m_pathName, m_content);
  ForgetRead();
}

void clFile::SaveAs(std::string_view strNewPathName, bool bOverWrite) {
  CloseFile();
  m_pathName = strNewPathName;
  ForgetRead();
  if (!bOverWrite && Exists())
    automation::Raise(automation::kInvalidValue, "clFile.SaveAs", "File alredy exits");
  Ports().files->Replace(m_pathName, m_content);
}

void clFile::DeleteFile() { Ports().files->Remove(m_pathName); }

void clFile::DeleteFileWithOutError() {
  try {
    DeleteFile();
  } catch (const automation::Error&) {
    return;  // that is what the caller asked for
  }
}

std::int32_t clFile::InFile(std::string_view strString) const {
  const std::size_t hit = m_content.find(FileBytes(strString).View());
  return hit == std::string::npos ? 0 : PositionOf(hit);
}

std::string clFile::Content() const { return Windows1252ToUtf8(m_content); }

void clFile::AppendRow(std::string_view strFile, std::string_view row) {
  Ports().files->Append(strFile, Utf8ToWindows1252(row) + "\r\n");
}

void clFile::SetContent(std::string_view strContent) { Edit() = Utf8ToWindows1252(strContent); }

void clFile::Copy(std::string& strPath) const {
  if (!strPath.ends_with('\\')) strPath.push_back('\\');
  Ports().files->Copy(m_pathName, strPath + Name());
}

std::int32_t clFile::Size() const {
  const std::int64_t size = Ports().files->Stamp(m_pathName).size;
  return static_cast<std::int32_t>(
      std::clamp<std::int64_t>(size, 0, std::numeric_limits<std::int32_t>::max()));
}

std::string clFile::NameWithoutExtention() const { return std::string(FileStem(m_pathName)); }

namespace {

// Finds out whether expected rows stand in a content, equals sign by equals sign. A marker counts where it is
// found first, as in FindRow.
class RowCheck {
 public:
  RowCheck(std::string_view content, std::span<const clFile::ExpectedRow> rows)
      : m_content(content),
        m_firstEnd(content.find(kLineEnd)),
        m_lastEnd(content.rfind(kLineEnd)),
        m_rows(rows),
        m_states(rows.size()) {
    m_first.fill(kNone);
    for (std::size_t i = 0; i < rows.size(); ++i) {
      m_states[i].next = std::exchange(m_first[Slot(rows[i].marker)], i);
    }
  }

  // False when a row is found here that would be changed.
  bool Take(std::size_t equals) {
    const std::string_view key = m_content.substr(0, equals + 1);
    if (key.size() < kShortestMarker) return true;
    for (std::size_t i = m_first[Slot(key)]; i != kNone; i = m_states[i].next) {
      if (m_states[i].isFound || !key.ends_with(m_rows[i].marker)) continue;
      m_states[i].isFound = true;
      if (!Stays(m_rows[i], equals)) return false;
    }
    return true;
  }
  std::vector<std::size_t> Missing() const {
    std::vector<std::size_t> missing;
    for (std::size_t i = 0; i < m_rows.size(); ++i) {
      if (!m_states[i].isFound) missing.push_back(i);
    }
    return missing;
  }

 private:
  struct State {
    std::size_t next = 0;  // the row that follows in the slot
    bool isFound = false;
  };

  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);
  static constexpr std::size_t kShortestMarker = 4;
  static constexpr std::size_t kSlots = 128;

  static std::size_t Slot(std::string_view key) {
    const auto letter = [&](std::size_t back) {
      return static_cast<std::size_t>(static_cast<unsigned char>(key[key.size() - 1 - back]));
    };
    return (letter(1) * 3 + letter(2) * 5 + letter(3) * 7) % kSlots;
  }
  bool Stays(const clFile::ExpectedRow& row, std::size_t equals) const {
    const std::size_t begin = equals + 1 - row.marker.size();
    if (begin < m_firstEnd) return false;
    // A last line without end is never replaced, whatever it holds.
    if (m_lastEnd < begin) return true;
    const FileBytes value(row.value);
    std::string_view rest = m_content.substr(equals + 1);
    if (!m_content.substr(0, begin).ends_with(kLineEnd) || !rest.starts_with(value.View())) return false;
    rest.remove_prefix(value.Size());
    // A value of several lines is put in front of what it left there the last time.
    return rest.starts_with(kLineEnd) && value.View().find('\r') == std::string_view::npos;
  }

  std::string_view m_content;
  std::size_t m_firstEnd;
  std::size_t m_lastEnd;
  std::span<const clFile::ExpectedRow> m_rows;
  // The first row of each slot: by the three letters before the equals sign, which tell most rows apart.
  std::array<std::size_t, kSlots> m_first;
  std::vector<State> m_states;
};

}  // namespace

std::optional<std::vector<std::size_t>> clFile::MissingRows(std::span<const ExpectedRow> rows) const {
  RowCheck check(m_content, rows);
  for (std::size_t equals = m_content.find('='); equals != std::string::npos;
       equals = m_content.find('=', equals + 1)) {
    if (!check.Take(equals)) return std::nullopt;
  }
  return check.Missing();
}

bool clFile::PutRowsBehindFirst(std::span<const std::string> rows, std::span<const std::string_view> keys) {
  const std::size_t firstEnd = m_content.find(kLineEnd);
  if (firstEnd == std::string::npos || !m_content.ends_with(kLineEnd)) return false;
  const std::string_view first = std::string_view(m_content).substr(0, firstEnd);
  const auto isInFirst = [&](std::string_view key) { return first.find(key) != std::string_view::npos; };
  if (std::any_of(keys.begin(), keys.end(), isInFirst)) return false;
  const std::size_t behindFirst = firstEnd + kLineEnd.size();
  std::string block;
  block.reserve(m_content.size());
  for (const std::string& row : rows) block.append(FileBytes(row).View()).append(kLineEnd);
  // As a rule they stand there already.
  if (m_content.compare(behindFirst, block.size(), block) == 0) {
    EraseRows(keys, behindFirst + block.size());
  } else {
    EraseRows(keys, behindFirst);
    Edit().insert(behindFirst, block);
  }
  return true;
}

// Removes the rows that hold one of the keys. There is a line end before and behind each.
void clFile::EraseRows(std::span<const std::string_view> keys, std::size_t from) {
  for (const std::string_view key : keys) {
    std::size_t begin = from;
    for (std::size_t hit = m_content.find(key, begin); hit != std::string::npos;
         hit = m_content.find(key, begin)) {
      begin = m_content.rfind(kLineEnd, hit) + kLineEnd.size();
      const std::size_t end = m_content.find(kLineEnd, hit) + kLineEnd.size();
      Edit().erase(begin, end - begin);
    }
  }
}

void clFile::EndLastRow(std::string_view text) {
  const std::size_t lineEnd = m_content.rfind(kLineEnd);
  const std::size_t start = lineEnd == std::string::npos ? 0 : lineEnd + kLineEnd.size();
  if (m_content.find(text, start) != std::string::npos) Edit().append(kLineEnd);
}

void clFile::DropContent() {
  m_isOpen = false;
  std::string().swap(m_content);
  ForgetRead();
}

}  // namespace hearthmake
