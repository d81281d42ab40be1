#pragma once

#include "adapters/git/RefStore.hpp"
#include "adapters/git/Repository.hpp"

namespace hearthmake::git {

// The refs of a repository on this machine.
class LocalRefs : public RefStore {
 public:
  explicit LocalRefs(const Repository& repository) : m_repository(repository) {}

  void Refresh() override {}
  std::optional<git_oid> Read(const std::string& name) override;
  std::vector<std::pair<std::string, git_oid>> List(const std::string& prefix) override;
  bool Change(const std::string& name, const std::optional<git_oid>& from, const std::optional<git_oid>& to,
              const git_signature* who, const char* why) override;

 private:
  const Repository& m_repository;
};

}  // namespace hearthmake::git
