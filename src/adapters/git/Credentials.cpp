#include "adapters/git/Credentials.hpp"

#include <unistd.h>

#include <cstdlib>
#include <utility>

#include "adapters/git/Handle.hpp"

namespace hearthmake::git {

Credentials::Credentials(std::string user, std::string password)
    : m_user(std::move(user)), m_password(std::move(password)) {}

void Credentials::Join(git_remote_callbacks& callbacks) {
  callbacks.credentials = &Credentials::Acquire;
  callbacks.payload = this;
}

int Credentials::Acquire(git_credential** out, const char* /*url*/, const char* userFromUrl, unsigned allowed,
                         void* payload) {
  auto* self = static_cast<Credentials*>(payload);
  try {
    const std::string user = userFromUrl != nullptr ? userFromUrl : self->m_user;
    const int code = self->Offer(out, user, allowed);
    if (code == GIT_EAUTH) {
      git_error_set_str(GIT_ERROR_HTTP, ("the server accepts none of the credentials of " + user).c_str());
    }
    return code;
  } catch (...) {  // nothing may be thrown through the library
    git_error_set_oom();
    return GIT_ERROR;
  }
}

int Credentials::Offer(git_credential** out, const std::string& user, unsigned allowed) {
  if ((allowed & GIT_CREDENTIAL_USERNAME) != 0 && IsNew("name"))
    return git_credential_username_new(out, user.c_str());
  const bool hasPassword = !m_password.empty();
  if ((allowed & GIT_CREDENTIAL_USERPASS_PLAINTEXT) != 0 && hasPassword && IsNew("password"))
    return git_credential_userpass_plaintext_new(out, user.c_str(), m_password.c_str());
  if ((allowed & GIT_CREDENTIAL_SSH_KEY) != 0) {
    if (std::getenv("SSH_AUTH_SOCK") != nullptr && IsNew("agent"))
      return git_credential_ssh_key_from_agent(out, user.c_str());
    return OfferKey(out, user);
  }
  return GIT_EAUTH;
}

int Credentials::OfferKey(git_credential** out, const std::string& user) {
  const char* home = std::getenv("HOME");
  if (home == nullptr) return GIT_EAUTH;
  for (const char* name : {"id_ed25519", "id_ecdsa", "id_rsa"}) {
    const std::string key = std::string(home) + "/.ssh/" + name;
    if (access(key.c_str(), R_OK) != 0 || !IsNew(key)) continue;
    // The password may be that of the key.
    return git_credential_ssh_key_new(out, user.c_str(), (key + ".pub").c_str(), key.c_str(),
                                      m_password.c_str());
  }
  return GIT_EAUTH;
}

}  // namespace hearthmake::git
