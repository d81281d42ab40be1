#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "adapters/git/LibGit2.hpp"

namespace hearthmake::git {

// The refs that everybody sees: branch, tags and check-outs. They are those of the repository itself, or of
// its remote. Names are full: "refs/heads/main".
class RefStore {
 public:
  RefStore() = default;
  RefStore(const RefStore&) = delete;
  RefStore& operator=(const RefStore&) = delete;
  virtual ~RefStore() = default;

  // What the others have changed since.
  virtual void Refresh() = 0;
  virtual std::optional<git_oid> Read(const std::string& name) = 0;
  virtual std::vector<std::pair<std::string, git_oid>> List(const std::string& prefix) = 0;
  // Moves the ref in one step that nobody can come between; without an old value it is made, without a new
  // one it is removed. False, and nothing has happened, when its value is not the old one.
  virtual bool Change(const std::string& name, const std::optional<git_oid>& from,
                      const std::optional<git_oid>& to, const git_signature* who, const char* why) = 0;
};

}  // namespace hearthmake::git
