#include "Program.hpp"

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <stdexcept>

namespace hearthmake::bench {

namespace {

using Clock = std::chrono::steady_clock;

// The block of pointers that a spawn takes; the texts must outlive it.
std::vector<char*> Pointers(const std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  for (const std::string& text : texts) pointers.push_back(const_cast<char*>(text.c_str()));
  pointers.push_back(nullptr);
  return pointers;
}

std::vector<std::string> Environment(const Variables& variables) {
  std::vector<std::string> environment;
  for (char** entry = environ; *entry != nullptr; ++entry) {
    const std::string text = *entry;
    const auto isSetAnew = [&](const auto& variable) { return text.starts_with(variable.first + "="); };
    if (std::none_of(variables.begin(), variables.end(), isSetAnew)) environment.push_back(text);
  }
  for (const auto& [name, value] : variables) environment.push_back(name + "=" + value);
  return environment;
}

pid_t Spawn(const std::vector<std::string>& arguments, char* const* environment,
            const posix_spawn_file_actions_t* actions) {
  const auto pointers = Pointers(arguments);
  pid_t child = 0;
  if (posix_spawnp(&child, pointers[0], actions, nullptr, pointers.data(), environment) != 0) {
    throw std::runtime_error("can't start " + arguments[0]);
  }
  return child;
}

double SecondsSince(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

}  // namespace

ProgramRun RunProgram(const std::vector<std::string>& arguments, const Variables& variables,
                      const std::string& outputFile) {
  const auto environment = Environment(variables);
  const auto pointers = Pointers(environment);
  const char* output = outputFile.empty() ? "/dev/null" : outputFile.c_str();
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, output, O_WRONLY | O_CREAT | O_TRUNC, 0600);
  const auto start = Clock::now();
  const pid_t child = Spawn(arguments, pointers.data(), &actions);
  int status = 0;
  rusage usage{};
  wait4(child, &status, 0, &usage);
  const double seconds = SecondsSince(start);
  posix_spawn_file_actions_destroy(&actions);
  return {seconds, usage.ru_maxrss, WIFEXITED(status) ? WEXITSTATUS(status) : -1};
}

double SpawnLoop(const std::vector<std::vector<std::string>>& commands, const Variables& variables) {
  const auto environment = Environment(variables);
  const auto pointers = Pointers(environment);
  const auto start = Clock::now();
  for (const auto& command : commands) {
    int status = 0;
    waitpid(Spawn(command, pointers.data(), nullptr), &status, 0);
  }
  return SecondsSince(start);
}

double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  const std::size_t middle = values.size() / 2;
  return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

}  // namespace hearthmake::bench
