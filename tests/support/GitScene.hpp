#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "adapters/git/GitSourceControl.hpp"
#include "adapters/posix/DriveMap.hpp"
#include "platform/SourceControl.hpp"
#include "support/PosixFolder.hpp"

namespace hearthmake::support {

using GitFiles = std::vector<std::pair<std::string, std::string>>;

// A folder with a database in it (db/srcsafe.ini and the bare repository db/repo.git) and room for working
// folders. The drive D: is the folder.
class GitScene {
 public:
  explicit GitScene(const GitFiles& files = {{"Suite/Lib/a.cls", "one"}, {"Suite/main.bas", "main"}}) {
    m_drives.SetDrive('D', m_folder.Path());
    m_drives.SetDrive('Z', "/");
    // Nothing of the person who runs the tests.
    m_folder.MakeFile("gitconfig",
                      "[user]\nname = Tester\nemail = t@example.org\n[init]\ndefaultBranch = main\n"
                      "[gc]\nauto = 0\n[safe]\ndirectory = *\n[protocol \"file\"]\nallow = always\n");
    for (const auto& [path, bytes] : files) m_folder.MakeFile("seed/" + path, bytes);
    m_folder.MakeFolder("seed");
    Shell("seed",
          "git init -q --bare ../db/repo.git && git init -q . && git add -A -f . && "
          "git commit -q --allow-empty -m First && git push -q ../db/repo.git main");
    WriteIni("[git]\r\nrepository = repo.git\r\n[users]\r\nAnn = ann@example.org\r\n");
  }

  const PosixFolder& Folder() const { return m_folder; }
  std::string Path(const std::string& name) const { return m_folder.Path(name); }
  void WriteIni(const std::string& text, const std::string& name = "db/srcsafe.ini") const {
    m_folder.MakeFile(name, text);
  }

  git::PathMap PathMap() const {
    return [drives = m_drives](std::string_view path) { return drives.ToPosix(path).value_or(""); };
  }
  std::unique_ptr<platform::VSSDatabase> Open(const std::string& user = "Ann",
                                              const std::string& ini = "D:\\db\\srcsafe.ini",
                                              git::Options options = {}) const {
    return git::GitSourceControl(PathMap(), std::move(options)).Open(ini, user, "");
  }
  std::unique_ptr<platform::VSSItem> Item(const std::string& spec, const std::string& user = "Ann") const {
    return Open(user)->VSSItem(spec, false);
  }

  // Runs git (or, with an empty folder, in the scene's folder); its output without the last line end.
  std::string Git(const std::string& folder, const std::string& arguments) const {
    return Shell(folder, "git " + arguments);
  }
  std::string Shell(const std::string& folder, const std::string& command) const {
    const std::string line = "cd '" + m_folder.Path(folder) + "' && export GIT_CONFIG_GLOBAL='" +
                             m_folder.Path("gitconfig") + "' GIT_CONFIG_NOSYSTEM=1 && (" + command + ") 2>&1";
    FILE* pipe = popen(line.c_str(), "r");
    std::string output;
    char buffer[4096];
    for (std::size_t n = 0; (n = fread(buffer, 1, sizeof buffer, pipe)) > 0;) output.append(buffer, n);
    m_status = pclose(pipe);
    EXPECT_TRUE(m_mayFail || m_status == 0) << command << "\n" << output;
    while (output.ends_with('\n')) output.pop_back();
    return output;
  }
  // The same for commands whose failure is an answer.
  bool Succeeds(const std::string& folder, const std::string& command) const {
    m_mayFail = true;
    Shell(folder, command);
    m_mayFail = false;
    return WIFEXITED(m_status) && WEXITSTATUS(m_status) == 0;
  }
  std::string Repo(const std::string& arguments) const { return Git("db/repo.git", arguments); }

 private:
  PosixFolder m_folder;
  posix::DriveMap m_drives;
  mutable int m_status = 0;
  mutable bool m_mayFail = false;
};

}  // namespace hearthmake::support
