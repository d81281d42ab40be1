#pragma once

#include <set>
#include <string>

#include "adapters/git/LibGit2.hpp"

namespace hearthmake::git {

// What a server is offered, each once, so that one that refuses all comes to an end: user and password, then,
// over ssh, the agent and the keys of this process's user.
class Credentials {
 public:
  Credentials(std::string user, std::string password);

  // Before each connection.
  void StartOver() { m_offered.clear(); }
  // Puts itself into the callbacks of a connection, which it must outlive.
  void Join(git_remote_callbacks& callbacks);

 private:
  static int Acquire(git_credential** out, const char* url, const char* userFromUrl, unsigned allowed,
                     void* payload);
  int Offer(git_credential** out, const std::string& user, unsigned allowed);
  int OfferKey(git_credential** out, const std::string& user);
  // Whether this is the first time.
  bool IsNew(const std::string& offer) { return m_offered.insert(offer).second; }

  std::string m_user;
  std::string m_password;
  std::set<std::string> m_offered;
};

}  // namespace hearthmake::git
