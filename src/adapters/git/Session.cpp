#include "adapters/git/Session.hpp"

#include "adapters/git/GitFailure.hpp"
#include "adapters/git/LocalRefs.hpp"
#include "adapters/git/RemoteRefs.hpp"

namespace hearthmake::git {

Session::Session(std::string_view iniPath, std::string_view user, std::string_view password,
                 const PathMap& toPosix, const Options& options)
    : m_toPosix(toPosix),
      m_options(options),
      m_settings(iniPath, toPosix),
      m_user(m_settings.FindPerson(user)),
      m_repository(m_settings.RepositoryFolder()),
      m_branchRef(FindBranch()),
      m_refs(MakeRefs(password)) {
  m_refs->Refresh();
  Tip();
}

std::string Session::FindBranch() const {
  const std::string given = m_settings.Branch();
  if (!given.empty()) {
    std::string ref = "refs/heads/" + given;
    int isValid = 0;
    if (git_reference_name_is_valid(&isValid, ref.c_str()) < 0 || isValid == 0)
      Fail(Number::kPathNotFound, m_settings.IniPath() + ": \"" + given + "\" can't be a branch");
    return ref;
  }
  Handle<git_reference> head;
  Check(git_reference_lookup(Out(head), m_repository.Get(), "HEAD"), m_repository.Folder());
  const char* target = git_reference_symbolic_target(head.get());
  if (target == nullptr)
    Fail(Number::kPathNotFound, m_repository.Folder() +
                                    ": HEAD is on no branch. Name one in the section [git] of " +
                                    m_settings.IniPath());
  return target;
}

std::unique_ptr<RefStore> Session::MakeRefs(std::string_view password) {
  const std::string remote = m_settings.Remote();
  if (remote.empty()) return std::make_unique<LocalRefs>(m_repository);
  m_hasRemote = true;
  RemoteAddress address = RemoteAddress::Find(
      m_repository, remote, [this](const std::string& path) { return m_settings.ToPosix(path); });
  return std::make_unique<RemoteRefs>(m_repository, std::move(address), m_branchRef,
                                      Credentials(m_user.name, std::string(password)));
}

git_oid Session::Tip() const {
  const std::optional<git_oid> tip = m_refs->Read(m_branchRef);
  if (tip) return *tip;
  Fail(Number::kPathNotFound, m_settings.IniPath() + ": the repository " + m_repository.Folder() +
                                  (m_hasRemote ? " or its remote" : "") + " has no branch " +
                                  m_branchRef.substr(std::string_view("refs/heads/").size()) +
                                  ", or nothing has been committed to it");
}

Handle<git_signature> Session::Signature() const {
  Handle<git_signature> signature;
  Check(git_signature_now(Out(signature), m_user.name.c_str(), m_user.mail.c_str()), m_user.name);
  return signature;
}

std::string Session::ToPosix(std::string_view dosPath) const {
  std::string path = m_toPosix(dosPath);
  if (path.empty()) Fail(Number::kPathNotFound, "Path not found: " + std::string(dosPath));
  return path;
}

}  // namespace hearthmake::git
