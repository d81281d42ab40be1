#pragma once

#include <functional>
#include <memory>
#include <string>

#include "adapters/git/Credentials.hpp"
#include "adapters/git/LocalRefs.hpp"

namespace hearthmake::git {

// Where a remote is.
struct RemoteAddress {
  std::string name;    // of a remote in the repository's configuration; "" for an address alone
  std::string url;     // what git calls it by
  std::string folder;  // of a repository on this machine, "" for one behind a server

  // From the remote's name, its url, or a path, which toPosix maps. Error 76 for a path that leads nowhere.
  static RemoteAddress Find(const Repository& repository, const std::string& text,
                            const std::function<std::string(const std::string&)>& toPosix);
  // For texts: without a password in the url.
  std::string Shown() const;
};

// The refs of a remote. They are mirrored below refs/hearthmake/ of the repository, so that the branches and
// tags of the person whose clone it is stay as they are. A change is pushed; refused there, it leaves nothing
// here but objects that nobody refers to.
class RemoteRefs : public RefStore {
 public:
  RemoteRefs(const Repository& repository, RemoteAddress address, std::string branchRef,
             Credentials credentials);

  // Fetches. Error 70 when the server refuses the credentials, 57 when it can't be reached.
  void Refresh() override;
  std::optional<git_oid> Read(const std::string& name) override;
  std::vector<std::pair<std::string, git_oid>> List(const std::string& prefix) override;
  bool Change(const std::string& name, const std::optional<git_oid>& from, const std::optional<git_oid>& to,
              const git_signature* who, const char* why) override;

 private:
  std::string Mirror(const std::string& name) const;
  Handle<git_remote> Remote() const;
  bool ChangeThere(const std::string& name, const std::optional<git_oid>& from,
                   const std::optional<git_oid>& to, const git_signature* who, const char* why);
  bool Push(const std::string& name, const std::optional<git_oid>& from, const std::optional<git_oid>& to,
            const git_signature* who);
  std::string PushRefspec(const std::string& refspec, const std::string& name);

  const Repository& m_repository;
  RemoteAddress m_address;
  std::string m_branchRef;
  Credentials m_credentials;
  std::string m_mirror;  // "refs/hearthmake/origin/"
  LocalRefs m_local;
  std::unique_ptr<Repository> m_there;  // of a folder on this machine
};

}  // namespace hearthmake::git
