#pragma once

#include <string>
#include <utility>
#include <vector>

namespace hearthmake::posix {

// The environment block of children: that of this process with some variables set anew. It is put
// together once and again only after this process's environment was changed through setenv.
class ChildEnvironment {
 public:
  explicit ChildEnvironment(const std::vector<std::pair<std::string, std::string>>& variables);
  ChildEnvironment(const ChildEnvironment&) = delete;
  ChildEnvironment& operator=(const ChildEnvironment&) = delete;

  // Until the next call, or until this process's environment is changed.
  char* const* Block();

 private:
  bool IsCurrent() const;
  bool IsSetAnew(const char* entry) const;

  std::vector<std::string> m_variables;  // NAME=value
  std::vector<char*> m_parent;           // the parent's entries that the block was made from
  std::vector<char*> m_block;
};

}  // namespace hearthmake::posix
