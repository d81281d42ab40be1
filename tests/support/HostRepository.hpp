#pragma once

#include <cstdio>
#include <string>

#include "support/HostCommand.hpp"

namespace hearthmake::support {

// A git repository in the world of a HostCommand, made and looked at with git's own command: what Ann has
// committed to the branch main. Its ini file is srcsafe.ini, which also knows Bob.
class HostRepository {
 public:
  explicit HostRepository(HostCommand& command) : m_command(command) {
    m_command.root.MakeFile("srcsafe.ini",
                            "[git]\nrepository = suite.git\n[users]\nAnn = ann@example.org\n"
                            "Bob = bob@example.org\n");
    Shell(
        "git init -q -b main work && git -C work config user.name Ann && "
        "git -C work config user.email ann@example.org");
    Write("Suite/readme.txt", "first\n");
    Commit("The first commit");
    Shell("git clone -q --bare work suite.git && git -C work remote add origin ../suite.git");
  }

  static bool HasGit() { return std::system("git --version >/dev/null 2>&1") == 0; }

  std::string Ini() const { return m_command.root.Path("srcsafe.ini"); }

  // A file of Ann's, and her next commit.
  void Write(const std::string& path, const std::string& content) const {
    m_command.root.MakeFile("work/" + path, content);
  }
  void Commit(const std::string& message) const {
    Shell("git -C work add -A && git -C work commit -q -m '" + message + "'");
  }
  void Push() const { Shell("git -C work pull -q --rebase origin main && git -C work push -q origin main"); }
  void CommitAndPush(const std::string& message) const {
    Commit(message);
    Push();
  }

  // What git says of the repository.
  std::string Git(const std::string& arguments) const { return Shell("git -C suite.git " + arguments); }
  // Author and subject of the commits that touched a path, newest first, a line each.
  std::string Log(const std::string& path) const {
    return Git("log --format='%an <%ae>: %s' main -- '" + path + "'");
  }
  std::string Content(const std::string& path) const { return Git("show 'main:" + path + "'"); }

 private:
  std::string Shell(const std::string& script) const {
    const std::string line = "cd '" + m_command.root.Path() + "' && export HOME=\"$PWD/home\" && " +
                             "export GIT_CONFIG_NOSYSTEM=1 && { " + script + "; } 2>&1";
    std::string output;
    FILE* pipe = popen(line.c_str(), "r");
    if (pipe == nullptr) return "(no shell)";
    char buffer[4096];
    for (std::size_t count = 0; (count = fread(buffer, 1, sizeof buffer, pipe)) > 0;)
      output.append(buffer, count);
    pclose(pipe);
    return output;
  }

  HostCommand& m_command;
};

}  // namespace hearthmake::support
