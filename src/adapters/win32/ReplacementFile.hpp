#pragma once

#include <string>
#include <string_view>

#include "adapters/win32/Handle.hpp"

namespace hearthmake::win32 {

// New content of a file, which goes to a temporary file in the same folder and takes the old one's place at
// Commit. Without Commit nothing is left of it. Failures are those of the port.
class ReplacementFile {
 public:
  // The target is a system path; one that exists keeps its spelling.
  ReplacementFile(const std::wstring& target, std::string_view dosPath);
  ReplacementFile(const ReplacementFile&) = delete;
  ReplacementFile& operator=(const ReplacementFile&) = delete;
  ~ReplacementFile();

  void Write(std::string_view bytes);
  // In place of Write: content, attributes and time of modification of a file (a system path).
  void CopyFrom(const std::wstring& source);

  // Gives the file the old one's permissions, attributes and time of creation.
  void CommitKeepingOld();
  void Commit();

 private:
  void MakeTemporary();
  // Whoever looks at each new file, a virus scanner for one, may hold it for a moment.
  template <class Attempt>
  void Persist(Attempt attempt);
  [[noreturn]] void Fail(DWORD error) const;

  std::wstring m_target;
  std::string m_dosPath;
  std::wstring m_temporary;
  Handle m_file;
};

}  // namespace hearthmake::win32
