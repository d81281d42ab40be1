#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "adapters/posix/DriveMap.hpp"

namespace hearthmake::posix {

// Finds the program of a command line as CreateProcess does when it is given the line alone.
//
// A program is named by a DOS path, by a POSIX path that begins with `/`, or by a bare name, which is
// looked for in the folder of the running program, the current folder, the system folder and the
// entries of PATH. `.exe` is appended to a name without extension; a name without `.exe` stands for
// one with it, because native tools have none. A file that can't be started (no image, no `#!`, no
// permission) is passed over.
//
// What was found is remembered by its text and trusted while the file itself is unchanged; a program
// that appears later in a folder that comes earlier is not noticed.
class ProgramFinder {
 public:
  enum class Kind {
    Native,   // an ELF image or a script that begins with `#!`
    Windows,  // a PE image
  };
  struct Program {
    std::string path;  // POSIX
    Kind kind = Kind::Native;
  };
  struct Match {
    const Program* program = nullptr;  // until the next call
    std::string_view arguments;        // the rest of the command line
  };

  // The system folder is a DOS path, empty when there is none.
  ProgramFinder(DriveMap drives, std::string systemFolder);

  // Nothing when the line names no program that can be started.
  std::optional<Match> Find(std::string_view commandLine);

  // The POSIX path of an executable file by POSIX rules: a name with a slash is a path, another is
  // looked for on PATH. Empty when there is none.
  static std::string FindNative(const std::string& name);
  // What a file is by its first bytes; nothing when it can't be read or is neither.
  static std::optional<Kind> Identify(const std::string& path);

 private:
  struct Stamp {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::int64_t size = 0;
    std::int64_t seconds = 0;
    std::int64_t nanoseconds = 0;
    friend bool operator==(const Stamp&, const Stamp&) = default;
  };
  struct Entry {
    Program program;
    Stamp stamp;
  };
  struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>{}(text); }
  };

  static std::optional<Stamp> StampOf(const std::string& path);
  const Program* Remembered(std::string_view name);
  const Program* LookUp(std::string_view name);
  std::optional<Entry> Probe(std::string_view name) const;
  std::optional<Entry> ProbeDosPath(const std::string& path) const;
  // Forgets everything when the current folder or PATH is another one than before.
  void CheckSurroundings();
  std::vector<std::string> SearchFolders() const;

  DriveMap m_drives;
  std::string m_systemFolder;
  std::string m_programFolder;
  std::string m_currentFolder;
  std::string m_searchPath;
  std::unordered_map<std::string, Entry, TextHash, std::equal_to<>> m_found;
  std::size_t m_longest = 0;
};

}  // namespace hearthmake::posix
