#pragma once

#include <fcntl.h>
#include <pty.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <optional>
#include <sstream>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "support/PosixFolder.hpp"

namespace hearthmake::support {

// The end of a process: its exit status (-1 when a signal ended it) and what it said.
struct CommandResult {
  int status = -1;
  std::string out;
  std::string err;
};

inline std::vector<std::string> LinesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

// The real command in a world of its own: home, settings, data and temporary folders below one folder, a
// shell script as compiler, three projects. Lib is a library, App a program that references it, Tool a
// program that stands alone.
class HostCommand {
 public:
  HostCommand() {
    for (const char* name : {"home", "config", "tmp", "src"}) root.MakeFolder(name);
    MakeCompiler();
  }

  using Arguments = std::vector<std::string>;

  // Runs `hearthmake --data <data> ...` to its end.
  CommandResult Run(const Arguments& arguments) { return Finish(Start(arguments)); }
  // The same without --data.
  CommandResult RunBare(const Arguments& arguments) { return Finish(StartBare(arguments)); }

  pid_t Start(Arguments arguments) {
    arguments.insert(arguments.begin(), {"--data", Data()});
    return StartBare(arguments);
  }
  CommandResult Finish(pid_t child) {
    int status = 0;
    waitpid(child, &status, 0);
    const std::string output = "output-" + std::to_string(child);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, root.Content(output + ".out"),
            root.Content(output + ".err")};
  }
  // A chroot or container may come without pseudo terminals.
  static bool HasTerminals() {
    int terminal = -1;
    int other = -1;
    if (openpty(&terminal, &other, nullptr, nullptr, nullptr) != 0) return false;
    close(terminal);
    close(other);
    return true;
  }
  // On a terminal of so many columns; both streams come as one.
  CommandResult RunOnTerminal(Arguments arguments, unsigned short columns) {
    arguments.insert(arguments.begin(), {"--data", Data()});
    const winsize size{24, columns, 0, 0};
    int terminal = -1;
    const pid_t child = forkpty(&terminal, nullptr, nullptr, &size);
    if (child == 0) Become(arguments);
    CommandResult result;
    char buffer[4096];
    for (ssize_t count = 0; (count = read(terminal, buffer, sizeof buffer)) > 0;) {
      result.out.append(buffer, static_cast<std::size_t>(count));
    }
    close(terminal);
    int status = 0;
    waitpid(child, &status, 0);
    result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return result;
  }

  // On a terminal on which somebody answers: each answer is typed, with a line end, when its prompt has come.
  // An answer of "^C" or "^D" is that key.
  CommandResult RunDialog(Arguments arguments,
                          const std::vector<std::pair<std::string, std::string>>& answers) {
    arguments.insert(arguments.begin(), {"--data", Data()});
    const winsize size{24, 200, 0, 0};
    int terminal = -1;
    const pid_t child = forkpty(&terminal, nullptr, nullptr, &size);
    if (child == 0) Become(arguments);
    CommandResult result;
    std::size_t next = 0;
    std::size_t seen = 0;
    char buffer[4096];
    for (ssize_t count = 0; (count = read(terminal, buffer, sizeof buffer)) > 0;) {
      result.out.append(buffer, static_cast<std::size_t>(count));
      while (next < answers.size()) {
        const std::size_t prompt = result.out.find(answers[next].first, seen);
        if (prompt == std::string::npos) break;
        seen = prompt + answers[next].first.size();
        const std::string& answer = answers[next++].second;
        const std::string keys = answer == "^C" ? "\x03" : answer == "^D" ? "\x04" : answer + "\n";
        // What is typed before the terminal was made silent would be dropped: the prompt comes after that.
        if (write(terminal, keys.data(), keys.size()) < 0) break;
      }
    }
    close(terminal);
    int status = 0;
    waitpid(child, &status, 0);
    result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return result;
  }

  std::string Data() const { return root.Path("data"); }
  std::string Source(const std::string& name) const { return root.Path("src/" + name); }

  void WriteProject(const std::string& name, const std::string& type, const std::string& rows = {}) const {
    root.MakeFile("src/" + name + ".vbp", "Type=" + type + "\r\n" + rows + "Startup=\"Sub Main\"\r\nName=\"" +
                                              name + "\"\r\nMajorVer=1\r\nMinorVer=0\r\nRevisionVer=0\r\n");
  }
  // A build "Shop" of Lib, App and Tool.
  void MakeShop() {
    WriteProject("Lib", "OleDll");
    WriteProject("App", "Exe", "Reference=*\\ALib.vbp\r\n");
    WriteProject("Tool", "Exe");
    Run({"new", "Shop"});
    Run({"settings", "VBExe", root.Path("vb6")});
    Run({"add", "Shop", Source("App.vbp"), Source("Lib.vbp"), Source("Tool.vbp")});
  }
  // Makes the compiler fail on a project, or sleep, until told otherwise.
  void FailOn(const std::string& project) const { root.MakeFile("fail", project + "\n"); }
  void SleepOn(const std::string& project) const { root.MakeFile("sleep", project + "\n"); }
  void BehaveWell() const {
    std::filesystem::remove(root.Path("fail"));
    std::filesystem::remove(root.Path("sleep"));
  }
  // The projects that the compiler was through with, one after the other.
  std::vector<std::string> Compiled() const { return LinesOf(root.Content("compiled")); }
  void ForgetCompiled() const { std::filesystem::remove(root.Path("compiled")); }

  // The process number of a compiler that sleeps; waits for it.
  pid_t WaitForSleeper() const {
    for (int i = 0; i < 2000; ++i) {
      const std::string text = root.Content("sleeper");
      if (text.ends_with('\n')) return static_cast<pid_t>(std::stol(text));
      std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return -1;
  }
  static bool IsGone(pid_t process) {
    for (int i = 0; i < 1000; ++i) {
      if (kill(process, 0) != 0) return true;
      std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return false;
  }
  bool LeftNoTemporaryFiles() const { return std::filesystem::is_empty(root.Path("tmp")); }

  PosixFolder root;
  // Set in the processes that are started, nothing: not set.
  std::vector<std::pair<std::string, std::optional<std::string>>> environment;
  std::string standardInput = "/dev/null";  // the file that they read

 private:
  void MakeCompiler() const {
    root.MakeFile("vb6",
                  "#!/bin/sh\n"
                  "ROOT='" +
                      root.Path() +
                      "'\n"
                      "posix() { printf '%s' \"$1\" | sed -e 's|^[Zz]:||' -e 's|\\\\|/|g'; }\n"
                      "PROJECT=$(posix \"$1\"); LOG=$(posix \"$4\"); NAME=$(basename \"$PROJECT\" .vbp)\n"
                      "is() { [ -e \"$ROOT/$1\" ] && grep -qx \"$NAME\" \"$ROOT/$1\"; }\n"
                      "if is sleep; then echo $$ > \"$ROOT/sleeper\"; sleep 60; fi\n"
                      "if is fail; then\n"
                      "  printf \"Compile Error in File '%s.cls', Line 12 : Variable not defined\\r\\n\" "
                      "\"$NAME\" >\"$LOG\"\n"
                      "  printf \"Build of '%s' failed.\\r\\n\" \"$NAME\" >>\"$LOG\"; exit 1\n"
                      "fi\n"
                      "case $2 in /makedll) cp '" SOURCE_DIRECTORY
                      "/tests/adapters/typelib/data/Bare.tlb' "
                      "\"$(dirname \"$PROJECT\")/$NAME.dll\";; esac\n"
                      "echo \"$NAME\" >>\"$ROOT/compiled\"\n"
                      "printf \"Build of '%s' succeeded.\\r\\n\" \"$NAME\" >\"$LOG\"\n");
    std::filesystem::permissions(root.Path("vb6"), std::filesystem::perms::owner_all);
  }

  pid_t StartBare(const Arguments& arguments) {
    const pid_t child = fork();
    if (child != 0) return child;
    const std::string output = root.Path("output-" + std::to_string(getpid()));
    dup2(open((output + ".out").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), STDOUT_FILENO);
    dup2(open((output + ".err").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), STDERR_FILENO);
    dup2(open(standardInput.c_str(), O_RDONLY), STDIN_FILENO);
    Become(arguments);
  }

  [[noreturn]] void Become(const Arguments& arguments) const {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGPIPE}) ::signal(signal, SIG_DFL);
    for (const char* name :
         {"HEARTHMAKE_DATA", "HEARTHMAKE_WINE_PREFIX", "HEARTHMAKE_DRIVES", "XDG_DATA_HOME", "NO_COLOR"}) {
      unsetenv(name);
    }
    setenv("HOME", root.Path("home").c_str(), 1);
    setenv("XDG_CONFIG_HOME", root.Path("config").c_str(), 1);
    setenv("TMPDIR", root.Path("tmp").c_str(), 1);
    setenv("TERM", "xterm", 1);
    for (const auto& [name, value] : environment) {
      if (value) setenv(name.c_str(), value->c_str(), 1);
      if (!value) unsetenv(name.c_str());
    }
    std::string program = BINARY_DIRECTORY "/src/hearthmake";
    std::vector<char*> pointers = {program.data()};
    Arguments copies = arguments;
    for (std::string& copy : copies) pointers.push_back(copy.data());
    pointers.push_back(nullptr);
    execv(program.c_str(), pointers.data());
    _exit(127);
  }
};

}  // namespace hearthmake::support
