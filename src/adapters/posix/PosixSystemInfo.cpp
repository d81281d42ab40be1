#include "adapters/posix/PosixSystemInfo.hpp"

#include <unistd.h>

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
  if (name.empty() || name.find('=') != std::string_view::npos) return std::nullopt;
  if (const char* value = std::getenv(std::string(name).c_str())) return value;
  for (char** variable = environ; variable != nullptr && *variable != nullptr; ++variable) {
    const std::string_view text = *variable;
    const std::size_t equals = text.find('=');
    if (equals == std::string_view::npos || !FoldedEqual(text.substr(0, equals), name)) continue;
    return std::string(text.substr(equals + 1));
  }
  return std::nullopt;
}

}  // namespace hearthmake::posix
