#include "adapters/posix/PosixSystemInfo.hpp"

#include <limits.h>
#include <pwd.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <utility>

#include "adapters/posix/FileName.hpp"

namespace hearthmake::posix {

namespace {

// The root of a drive keeps its backslash: `C:` alone would be the current folder of the drive.
std::string WithoutBackslash(std::string folder) {
  while (folder.size() > 1 && folder.back() == '\\' && folder[folder.size() - 2] != ':') folder.pop_back();
  return folder;
}

bool IsVariableName(std::string_view name) {
  return !name.empty() && name.find('=') == std::string_view::npos &&
         name.find('\0') == std::string_view::npos;
}

// The name of a variable as the environment spells it; as it is given where there is none.
std::string SpelledName(std::string_view name) {
  std::string spelled(name);
  if (std::getenv(spelled.c_str()) != nullptr) return spelled;
  for (char** variable = environ; variable != nullptr && *variable != nullptr; ++variable) {
    const std::string_view text = *variable;
    const std::string_view other = text.substr(0, text.find('='));
    if (FoldedEqual(other, name)) return std::string(other);
  }
  return spelled;
}

}  // namespace

PosixSystemInfo::PosixSystemInfo(SystemFacts facts) : m_facts(std::move(facts)) {
  m_facts.temporaryFolder = WithoutBackslash(std::move(m_facts.temporaryFolder));
  if (!m_facts.temporaryFolder.ends_with('\\')) m_facts.temporaryFolder += '\\';
  m_facts.systemFolder = WithoutBackslash(std::move(m_facts.systemFolder));
  m_facts.componentFolder = WithoutBackslash(std::move(m_facts.componentFolder));
}

std::string PosixSystemInfo::TemporaryFolder() { return m_facts.temporaryFolder; }

std::string PosixSystemInfo::SystemFolder() { return m_facts.systemFolder; }

std::string PosixSystemInfo::ComponentFolder() { return m_facts.componentFolder; }

std::int32_t PosixSystemInfo::MajorVersion() { return m_facts.majorVersion; }

std::optional<std::string> PosixSystemInfo::EnvironmentVariable(std::string_view name) {
  if (!IsVariableName(name)) return std::nullopt;
  const char* value = std::getenv(SpelledName(name).c_str());
  return value != nullptr ? std::optional<std::string>(value) : std::nullopt;
}

std::vector<std::string> PosixSystemInfo::Environment() {
  std::vector<std::string> variables;
  for (char** variable = environ; variable != nullptr && *variable != nullptr; ++variable) {
    variables.emplace_back(*variable);
  }
  return variables;
}

void PosixSystemInfo::SetEnvironmentVariable(std::string_view name, const std::optional<std::string>& value) {
  if (!IsVariableName(name)) return;
  const std::string spelled = SpelledName(name);
  if (value) {
    setenv(spelled.c_str(), value->c_str(), 1);
  } else {
    unsetenv(spelled.c_str());
  }
}

std::string PosixSystemInfo::ComputerName() {
  std::array<char, HOST_NAME_MAX + 1> name{};
  if (gethostname(name.data(), name.size() - 1) != 0) return "localhost";
  const std::string_view text = name.data();
  return std::string(text.substr(0, text.find('.')));
}

std::string PosixSystemInfo::UserName() {
  if (const passwd* entry = getpwuid(geteuid()); entry != nullptr) return entry->pw_name;
  return EnvironmentVariable("USER").value_or("user" + std::to_string(geteuid()));
}

}  // namespace hearthmake::posix
