#pragma once

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "support/HostCommand.hpp"

namespace hearthmake::support {

// An interactive shell on a terminal. The command hearthmake, as it finds it, only notes its arguments, but
// for what the shell's completion asks of it.
class ShellOnTerminal {
 public:
  // The first line that is typed is the set-up.
  ShellOnTerminal(const HostCommand& command, std::vector<std::string> arguments, const std::string& setUp)
      : m_root(command.root.Path()) {
    MakeNoter(command);
    Start(std::move(arguments), command.Data());
    Type(setUp + "; : > " + m_root + "/ready\n");
    WaitFor([&] { return std::filesystem::exists(m_root + "/ready"); });
  }
  ShellOnTerminal(const ShellOnTerminal&) = delete;
  ShellOnTerminal& operator=(const ShellOnTerminal&) = delete;
  ~ShellOnTerminal() {
    close(m_terminal);
    kill(m_shell, SIGKILL);
    waitpid(m_shell, nullptr, 0);
  }

  static bool IsThere(const std::string& shell) {
    for (const char* folder : {"/usr/bin/", "/bin/"}) {
      if (access((folder + shell).c_str(), X_OK) == 0) return true;
    }
    return false;
  }

  // The arguments, each in <>, of the command line that comes of these keys and Enter.
  std::string Enter(const std::string& keys) {
    const std::size_t before = Noted().size();
    Type(keys + "\n");
    WaitFor([&] { return Noted().size() > before; });
    const auto lines = Noted();
    return lines.size() > before ? lines[before] : "(nothing was run) " + m_seen;
  }

 private:
  void MakeNoter(const HostCommand& command) const {
    command.root.MakeFolder("bin");
    command.root.MakeFile("bin/hearthmake",
                          "#!/bin/sh\n"
                          "case $1 in __complete) exec '" BINARY_DIRECTORY
                          "/src/hearthmake' \"$@\";; esac\n"
                          "line=; for a in \"$@\"; do line=\"$line<$a>\"; done\n"
                          "printf '%s\\n' \"$line\" >> '" +
                              m_root + "/noted'\n");
    std::filesystem::permissions(m_root + "/bin/hearthmake", std::filesystem::perms::owner_all);
  }

  void Start(std::vector<std::string> arguments, const std::string& data) {
    const winsize size{40, 200, 0, 0};
    m_shell = forkpty(&m_terminal, nullptr, nullptr, &size);
    if (m_shell != 0) return;
    setenv("PATH", (m_root + "/bin:/usr/bin:/bin").c_str(), 1);
    setenv("HOME", (m_root + "/home").c_str(), 1);
    setenv("XDG_CONFIG_HOME", (m_root + "/config").c_str(), 1);
    setenv("XDG_DATA_HOME", (m_root + "/home").c_str(), 1);
    setenv("HEARTHMAKE_DATA", data.c_str(), 1);
    setenv("LC_ALL", "C.UTF-8", 1);
    setenv("TERM", "xterm", 1);
    if (chdir((m_root + "/src").c_str()) != 0) _exit(126);
    std::vector<char*> pointers;
    for (std::string& argument : arguments) pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    execvp(pointers[0], pointers.data());
    _exit(127);
  }

  void Type(const std::string& keys) const {
    for (std::size_t done = 0; done < keys.size();) {
      const ssize_t count = write(m_terminal, keys.data() + done, keys.size() - done);
      if (count <= 0) return;
      done += static_cast<std::size_t>(count);
    }
  }

  template <class Condition>
  void WaitFor(Condition isMet) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (!isMet() && std::chrono::steady_clock::now() < end) {
      // What the shell shows must be read, or it would wait for that.
      pollfd waiting{m_terminal, POLLIN, 0};
      if (poll(&waiting, 1, 10) <= 0) continue;
      char buffer[4096];
      const ssize_t count = read(m_terminal, buffer, sizeof buffer);
      if (count <= 0) return;
      m_seen.append(buffer, static_cast<std::size_t>(count));
      Answer();
    }
  }

  // Some shells ask the terminal what it is before they go on.
  void Answer() {
    constexpr const char* kWhatAreYou = "\x1b[c";
    const std::size_t asked = m_seen.find(kWhatAreYou, m_answered);
    if (asked == std::string::npos) return;
    m_answered = asked + 1;
    Type("\x1b[?1;2c");
  }

  std::vector<std::string> Noted() const {
    std::vector<std::string> lines;
    if (FILE* file = std::fopen((m_root + "/noted").c_str(), "r"); file != nullptr) {
      std::string text;
      char buffer[4096];
      for (std::size_t count = 0; (count = std::fread(buffer, 1, sizeof buffer, file)) > 0;)
        text.append(buffer, count);
      std::fclose(file);
      lines = LinesOf(text);
    }
    return lines;
  }

  std::string m_root;
  int m_terminal = -1;
  pid_t m_shell = -1;
  std::string m_seen;
  std::size_t m_answered = 0;
};

}  // namespace hearthmake::support
