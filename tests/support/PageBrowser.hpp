#pragma once

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "support/PosixFolder.hpp"

namespace hearthmake::support {

// A browser without a window, for pages from files. Nothing here needs a network.
class PageBrowser {
 public:
  // What a page came to: its elements after its scripts, and what the console of the browser was told.
  struct Visit {
    int status = -1;
    std::string dom;
    std::string console;
  };

  // The program; nothing where none is installed.
  static std::optional<std::string> Program() {
    for (const char* path : {"/usr/bin/chromium", "/usr/bin/chromium-browser", "/usr/bin/google-chrome"}) {
      if (access(path, X_OK) == 0) return path;
    }
    return std::nullopt;
  }

  // Opens the text as a page, with a further script at its end, in a window of so many pixels.
  Visit Open(std::string html, const std::string& script = {}, int width = 1280) {
    const std::size_t end = html.rfind("</body>");
    if (end != std::string::npos) html.insert(end, "<script>" + script + "</script>");
    const std::string page = m_folder.MakeFile("page.html", html);
    Visit visit;
    visit.status =
        Run({"timeout", "120", *Program(), "--headless", "--no-sandbox", "--disable-gpu", "--disable-quic",
             "--no-first-run", "--disable-background-networking", "--disable-component-update",
             "--disable-sync", "--enable-logging=stderr", "--user-data-dir=" + m_folder.MakeFolder("profile"),
             "--window-size=" + std::to_string(width) + ",1000", "--virtual-time-budget=4000", "--dump-dom",
             "file://" + page});
    visit.dom = m_folder.Content("out");
    visit.console = ConsoleLines(m_folder.Content("err"));
    std::filesystem::remove_all(m_folder.Path("profile"));
    return visit;
  }

 private:
  int Run(std::vector<std::string> arguments) const {
    std::vector<char*> pointers;
    for (std::string& argument : arguments) pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    const std::string home = m_folder.MakeFolder("home");
    const pid_t child = fork();
    if (child == 0) {
      setenv("HOME", home.c_str(), 1);
      dup2(open("/dev/null", O_RDONLY), STDIN_FILENO);
      dup2(open(m_folder.Path("out").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), STDOUT_FILENO);
      dup2(open(m_folder.Path("err").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), STDERR_FILENO);
      execvp(pointers.front(), pointers.data());
      _exit(127);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

  // Lines of the log that begin "[process:thread:time:INFO:CONSOLE:line] text".
  static std::string ConsoleLines(const std::string& log) {
    std::string lines;
    std::istringstream stream(log);
    for (std::string line; std::getline(stream, line);) {
      if (line.find(":CONSOLE") != std::string::npos) lines += line + "\n";
    }
    return lines;
  }

  PosixFolder m_folder;
};

}  // namespace hearthmake::support
