#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/posix/PosixFileSystem.hpp"
#include "adapters/posix/TemporaryDirectory.hpp"
#include "adapters/typelib/TypeLibFileReader.hpp"

namespace hearthmake::tests {

// Text with the line ends of Visual Basic's files.
inline std::string CrLf(std::string_view text) {
  std::string result;
  for (const char c : text) result += c == '\n' ? std::string("\r\n") : std::string(1, c);
  return result;
}

// A drive C: of its own, on which the built programs are run.
class Vb6Sandbox {
 public:
  using Environment = std::map<std::string, std::string>;

  struct Result {
    int exitCode = -1;  // -1 when a signal ended it
    int signal = 0;
    std::string output;
    std::string errors;
  };

  Vb6Sandbox() {
    std::filesystem::create_directories(Drive());
    auto drives = std::make_shared<posix::DriveMap>();
    drives->SetDrive('C', Drive());
    m_files = std::make_shared<posix::PosixFileSystem>(drives);
  }

  // The POSIX folder of C:.
  std::string Drive() const { return m_folder.Path() + "/c"; }
  platform::FileSystem& Files() { return *m_files; }

  // Writes a file, making its folders; line feeds become CR LF.
  void Write(const std::string& dosPath, std::string_view text) {
    m_files->CreateFolders(dosPath.substr(0, dosPath.rfind('\\')));
    m_files->Replace(dosPath, CrLf(text));
  }
  std::string Read(const std::string& dosPath) { return m_files->Read(dosPath); }
  bool Exists(const std::string& dosPath) { return m_files->FileExists(dosPath); }

  platform::TypeLibInfo Library(const std::string& dosPath) {
    return typelib::TypeLibFileReader(m_files).Read(dosPath);
  }
  std::vector<platform::TypeDescription> Types(const std::string& dosPath) {
    return typelib::TypeLibFileReader(m_files).ReadTypes(dosPath);
  }

  // Starts a program of tools/vb6; environment adds to HEARTHMAKE_DRIVES, which names C: only.
  pid_t Start(const std::string& program, const std::vector<std::string>& arguments,
              const Environment& environment = {}) {
    std::vector<std::string> words = {std::string(BINARY_DIRECTORY) + "/tools/vb6/" + program};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<std::string> variables = {"HEARTHMAKE_DRIVES=C:=" + Drive()};
    for (const auto& [name, value] : environment) variables.push_back(name + "=" + value);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    constexpr int kFlags = O_WRONLY | O_CREAT | O_TRUNC;
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, OutputFile().c_str(), kFlags, 0600);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, ErrorFile().c_str(), kFlags, 0600);
    pid_t child = -1;
    const int failure = posix_spawn(&child, words[0].c_str(), &actions, nullptr, Pointers(words).data(),
                                    Pointers(variables).data());
    posix_spawn_file_actions_destroy(&actions);
    EXPECT_EQ(failure, 0) << words[0];
    return child;
  }

  Result Wait(pid_t child) {
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    Result result;
    if (WIFEXITED(status)) result.exitCode = WEXITSTATUS(status);
    if (WIFSIGNALED(status)) result.signal = WTERMSIG(status);
    result.output = Content(OutputFile());
    result.errors = Content(ErrorFile());
    return result;
  }

  Result Run(const std::string& program, const std::vector<std::string>& arguments,
             const Environment& environment = {}) {
    return Wait(Start(program, arguments, environment));
  }

  // Compiles a project and returns the log.
  std::string Compile(const std::string& project, const Environment& environment = {}) {
    std::filesystem::remove(Drive() + "/CR.txt");
    m_result = Run("vb6", {project, "/makedll", "/out", "C:\\CR.txt"}, environment);
    return Exists("C:\\CR.txt") ? Read("C:\\CR.txt") : "";
  }
  // How the last Compile ended.
  const Result& Last() const { return m_result; }

 private:
  static std::vector<char*> Pointers(std::vector<std::string>& words) {
    std::vector<char*> pointers;
    for (std::string& word : words) pointers.push_back(word.data());
    pointers.push_back(nullptr);
    return pointers;
  }
  static std::string Content(const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
  }
  std::string OutputFile() const { return m_folder.Path() + "/output"; }
  std::string ErrorFile() const { return m_folder.Path() + "/errors"; }

  posix::TemporaryDirectory m_folder;
  std::shared_ptr<posix::PosixFileSystem> m_files;
  Result m_result;
};

}  // namespace hearthmake::tests
