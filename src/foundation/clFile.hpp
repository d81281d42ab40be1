#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace hearthmake {

// One text file of the VB world on disk: project files, compiler logs, group and batch files. It is read
// whole, edited by rows and pieces found by marker texts, and written back whole.
//
// Contents are single-byte Windows-1252 and stay byte for byte what they were where nothing is edited;
// this class is the only place that converts. Positions count characters from 1. Searches are plain and
// regard case. Rows end in CR LF.
class clFile {
 public:
  // The folder of the path, with its backslash; empty when the path names none.
  std::string Path() const;
  // True for a file; a folder, or what can't be looked at, is none.
  bool Exists() const;
  std::string Name() const;
  void SetFile(std::string_view strFile);

  // Reads the file; makes it when it is missing. No effect while open. Errors of the file system.
  void OpenFile();
  // The content stays in memory.
  void CloseFile();
  void SetAttributes(std::int32_t lnewValue);
  bool ReadOnly() const;
  bool FileIsOpen() const { return m_isOpen; }

  // The text between strStart, searched from lPos, and the next strStop, when there is any; lPos then
  // moves to that strStop. Error 45, source "cFile.GetText", "File is not open".
  std::string GetText(std::string_view strStart, std::string_view strStop, std::int32_t& lPos) const;
  const std::string& PathName() const { return m_pathName; }
  // Overwrites the text behind strStart, searched from lPos, character for character; the content keeps
  // its length. Error 5 when strStart is not found.
  void PutText(std::string_view strStart, std::string_view strText, std::int32_t lPos);

  // A row is found by a text in it, searched from lngStartPos, which is 0 afterwards when there is none.
  // A row that no CR LF ends is left alone by ReplaceRow and GetRow, and RemoveRow keeps its last
  // character. A row found in the first line counts from its second character on: that line is never
  // edited by the files' users.
  void ReplaceRow(std::string_view str1, std::string_view str2, std::int32_t& lngStartPos);
  void RemoveRow(std::string_view str1, std::int32_t& lngStartPos);
  // Puts a row before or after the one that holds strSearch, or at the end.
  void InsertNewRow(std::string_view strRow, std::string_view strSearch, bool bBefore);
  std::string GetRow(std::string_view str1, std::int32_t& lngStartPos) const;

  // Writes the content to the file, a read-only one too; the old file stays whole until the new one is.
  // A file that has this content already, or was read with it, is not written.
  void Save();
  // Writes under another name, which the object has from then on, also when it is refused: error 45,
  // source "clFile.SaveAs", "File alredy exits", without bOverWrite.
  void SaveAs(std::string_view strNewPathName, bool bOverWrite);
  void DeleteFile();
  void DeleteFileWithOutError();
  // Where a text stands first; 0 when it does not.
  std::int32_t InFile(std::string_view strString) const;
  std::string Content() const;
  void SetContent(std::string_view strContent);
  // Copies the file into a folder. A missing final backslash is put to the caller's strPath.
  void Copy(std::string& strPath) const;
  // There are no short names here: the path as it is.
  std::string ShortFileName() const { return m_pathName; }
  // In bytes; 0 when the file can't be looked at.
  std::int32_t Size() const;
  std::string NameWithoutExtention() const;

  // A row that a file should have: the text that finds it (at least three letters and an equals sign) and
  // what follows.
  struct ExpectedRow {
    std::string_view marker;
    std::string_view value;
  };
  // Which of the rows the content lacks, as indexes; nothing when one of the others would be changed by
  // replacing it by its marker and value. One walk over the content, for the many files in which
  // (almost) nothing is to be changed.
  std::optional<std::vector<std::size_t>> MissingRows(std::span<const ExpectedRow> rows) const;
  // The text of a file that must exist.
  static std::string ReadText(std::string_view strFile);
  // Puts a row at the end of a file, which is made when it is missing, without reading it.
  static void AppendRow(std::string_view strFile, std::string_view row);
  // Removes the rows that hold one of the keys and puts others behind the first one, in one walk. False,
  // with nothing done, when the first row holds a key or the last one has no line end.
  bool PutRowsBehindFirst(std::span<const std::string> rows, std::span<const std::string_view> keys);
  // Gives the last row a line end when it holds the text and has none.
  void EndLastRow(std::string_view text);
  // Frees the memory of the content.
  void DropContent();

 private:
  struct Row {
    std::size_t start = 0;
    std::size_t end = std::string::npos;  // of its CR LF
    bool isFound = false;
  };
  Row FindRow(std::string_view marker, std::int32_t& lngStartPos) const;
  std::size_t Find(std::string_view bytes, std::int32_t position) const;
  void AppendRow(std::string_view row);
  void EraseRows(std::span<const std::string_view> keys, std::size_t from);
  bool IsAsRead() const { return m_isUnedited || (m_read && *m_read == m_content); }
  // The content, to be changed.
  std::string& Edit();
  void ForgetRead();

  std::string m_pathName;
  std::string m_content;  // Windows-1252 bytes
  // What the file held when it was read, as long as the content may still be that; the content itself until
  // it is edited.
  std::optional<std::string> m_read;
  bool m_isUnedited = false;
  bool m_isOpen = false;
};

}  // namespace hearthmake
