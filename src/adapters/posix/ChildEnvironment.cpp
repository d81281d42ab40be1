#include "adapters/posix/ChildEnvironment.hpp"

#include <unistd.h>

#include <algorithm>
#include <cstring>

namespace hearthmake::posix {

ChildEnvironment::ChildEnvironment(const std::vector<std::pair<std::string, std::string>>& variables) {
  for (const auto& [name, value] : variables) m_variables.push_back(name + "=" + value);
}

char* const* ChildEnvironment::Block() {
  if (!m_block.empty() && IsCurrent()) return m_block.data();
  m_parent.clear();
  m_block.clear();
  for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
    m_parent.push_back(*entry);
    if (!IsSetAnew(*entry)) m_block.push_back(*entry);
  }
  for (std::string& variable : m_variables) m_block.push_back(variable.data());
  m_block.push_back(nullptr);
  return m_block.data();
}

// setenv never writes into an entry, it puts another one in its place: the pointers tell.
bool ChildEnvironment::IsCurrent() const {
  if (environ == nullptr) return m_parent.empty();
  const std::size_t count = m_parent.size();
  for (std::size_t i = 0; i < count; ++i)
    if (environ[i] != m_parent[i]) return false;
  return environ[count] == nullptr;
}

bool ChildEnvironment::IsSetAnew(const char* entry) const {
  return std::any_of(m_variables.begin(), m_variables.end(), [&](const std::string& variable) {
    return std::strncmp(entry, variable.c_str(), variable.find('=') + 1) == 0;
  });
}

}  // namespace hearthmake::posix
