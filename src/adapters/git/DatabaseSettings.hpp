#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "adapters/git/IniFile.hpp"
#include "adapters/git/ItemPath.hpp"

namespace hearthmake::git {

using PathMap = std::function<std::string(std::string_view dosPath)>;

// Who works: the name, in the spelling of the ini file when it lists the user, and the address of mail.
struct Person {
  std::string name;
  std::string mail;
};

// What the ini file of a database says.
//
//   [git]
//   repository = ..\Suite.git       ; by default the folder of the ini file
//   branch = main                   ; by default the repository's HEAD
//   remote = origin                 ; a configured remote, an url or a path; none: the repository alone
//   [users]
//   Ann = ann@example.org
//   [working folders]               ; of everybody; [working folders.Ann]: hers come first
//   $/Suite = C:\Src\Suite
class DatabaseSettings {
 public:
  // Error 53 when the file (a DOS path) is missing, 75 when it can't be read.
  DatabaseSettings(std::string_view iniPath, const PathMap& toPosix);

  const std::string& IniPath() const { return m_iniPath; }
  std::string RepositoryFolder() const;  // a POSIX path
  std::string Branch() const { return m_ini.Value("git", "branch"); }
  std::string Remote() const { return m_ini.Value("git", "remote"); }
  // A path of the ini file, DOS or POSIX, as a POSIX path; a relative one starts at the file's folder.
  std::string ToPosix(const std::string& path) const;
  // An empty name is that of this process's user. Error 5 for a name that git can't store.
  Person FindPerson(std::string_view name) const;
  // Where the user keeps the item (a DOS path): the folder of the nearest item that has one, and the names
  // from there. Nothing when there is none.
  std::optional<std::string> WorkingFolder(const Person& person, const ItemPath& item) const;

 private:
  std::optional<std::string> WorkingFolderIn(const std::string& section, const ItemPath& item) const;
  std::string ToDos(const std::string& path) const;

  std::string m_iniPath;
  PathMap m_toPosix;
  IniFile m_ini;
};

}  // namespace hearthmake::git
