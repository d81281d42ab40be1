#include "adapters/git/RemoteRefs.hpp"

#include <unistd.h>

#include <array>
#include <atomic>
#include <utility>

#include "adapters/git/GitFailure.hpp"
#include "adapters/git/ObjectCopy.hpp"
#include "adapters/git/WriteLock.hpp"

namespace hearthmake::git {

namespace {

constexpr std::size_t kRefs = 5;  // the length of "refs/"

// "server:path", but not "C:\path".
bool IsServerPath(const std::string& text) {
  const std::size_t colon = text.find(':');
  return colon != std::string::npos && colon > 1 && text.find_first_of("/\\") > colon;
}

std::string FolderOf(const std::string& url) {
  constexpr std::string_view kScheme = "file://";
  if (url.starts_with(kScheme)) return url.substr(kScheme.size());
  return url.find("://") != std::string::npos || IsServerPath(url) ? "" : url;
}

// The url of a remote in the repository's configuration, "" when there is none of that name.
std::string ConfiguredUrl(const Repository& repository, const std::string& name) {
  Handle<git_config> config;
  Check(git_repository_config_snapshot(Out(config), repository.Get()), repository.Folder());
  const char* url = nullptr;
  const int code = git_config_get_string(&url, config.get(), ("remote." + name + ".url").c_str());
  return code == 0 && url != nullptr ? url : "";
}

std::string ShortHash(const std::string& text) {
  git_oid id{};
  git_odb_hash(&id, text.data(), text.size(), GIT_OBJECT_BLOB);
  std::array<char, 17> hex{};
  return git_oid_tostr(hex.data(), hex.size(), &id);
}

// A name in the adapter's own refs, in the way for as long as the object lives.
class OutgoingRef {
 public:
  OutgoingRef(LocalRefs& refs, const git_oid& id, const git_signature* who) : m_refs(refs), m_id(id) {
    static std::atomic<unsigned> counter = 0;
    m_name = std::string(WriteLock::kOwnRefs) + "outgoing/" + std::to_string(getpid()) + "-" +
             std::to_string(counter++);
    // One that a killed process of this id has left is in the way of nobody.
    m_refs.Change(m_name, m_refs.Read(m_name), m_id, who, "outgoing");
  }
  OutgoingRef(const OutgoingRef&) = delete;
  OutgoingRef& operator=(const OutgoingRef&) = delete;
  ~OutgoingRef() {
    try {
      m_refs.Change(m_name, m_id, std::nullopt, nullptr, nullptr);
    } catch (const automation::Error&) {  // it is nobody's branch: left behind, it does no harm
    }
  }

  const std::string& Name() const { return m_name; }

 private:
  LocalRefs& m_refs;
  git_oid m_id;
  std::string m_name;
};

// A push: what the server is offered, and what it says of the ref.
class PushTalk : public Credentials {
 public:
  explicit PushTalk(const Credentials& credentials) : Credentials(credentials) {}

  const std::string& Refusal() const { return m_refusal; }

  static int NoteAnswer(const char* /*ref*/, const char* status, void* payload) {
    auto* talk = static_cast<PushTalk*>(static_cast<Credentials*>(payload));
    if (status != nullptr) talk->m_refusal = status;
    return 0;
  }

 private:
  std::string m_refusal;
};

}  // namespace

RemoteAddress RemoteAddress::Find(const Repository& repository, const std::string& text,
                                  const std::function<std::string(const std::string&)>& toPosix) {
  RemoteAddress address;
  address.url = ConfiguredUrl(repository, text);
  if (!address.url.empty()) {
    address.name = text;
    address.folder = FolderOf(address.url);
    if (!address.folder.empty() && !address.folder.starts_with('/')) {
      const char* base = git_repository_workdir(repository.Get());
      address.folder = (base == nullptr ? repository.Folder() + "/" : base) + address.folder;
      address.url = address.folder;
    }
    return address;
  }
  address.url = text;
  address.folder = FolderOf(text);
  if (!address.folder.empty() && !text.starts_with("file://")) {
    address.folder = toPosix(text);
    address.url = address.folder;
    if (address.folder.empty() || access(address.folder.c_str(), F_OK) != 0)
      Fail(Number::kPathNotFound,
           "The remote " + text + " is no remote of the repository, no url and no folder");
  }
  return address;
}

std::string RemoteAddress::Shown() const {
  const std::size_t scheme = url.find("://");
  const std::size_t at = url.rfind('@');
  if (!name.empty()) return name;
  if (scheme == std::string::npos || at == std::string::npos || at < scheme) return url;
  return url.substr(0, scheme + 3) + url.substr(at + 1);
}

RemoteRefs::RemoteRefs(const Repository& repository, RemoteAddress address, std::string branchRef,
                       Credentials credentials)
    : m_repository(repository),
      m_address(std::move(address)),
      m_branchRef(std::move(branchRef)),
      m_credentials(std::move(credentials)),
      m_mirror(WriteLock::kOwnRefs + (m_address.name.empty() ? ShortHash(m_address.url) : m_address.name) +
               "/"),
      m_local(repository) {
  if (!m_address.folder.empty()) m_there = std::make_unique<Repository>(m_address.folder);
}

Handle<git_remote> RemoteRefs::Remote() const {
  Handle<git_remote> remote;
  // By its address alone, and without a look at rewriting rules for addresses: the library loses twenty
  // kilobytes for each line of the configuration that is none.
  git_remote_create_options options = GIT_REMOTE_CREATE_OPTIONS_INIT;
  options.repository = m_repository.Get();
  options.flags = GIT_REMOTE_CREATE_SKIP_INSTEADOF | GIT_REMOTE_CREATE_SKIP_DEFAULT_FETCHSPEC;
  Check(git_remote_create_with_opts(Out(remote), m_address.url.c_str(), &options), m_address.Shown());
  return remote;
}

std::string RemoteRefs::Mirror(const std::string& name) const { return m_mirror + name.substr(kRefs); }

void RemoteRefs::Refresh() {
  std::array<std::string, 3> refspecs = {"+" + m_branchRef + ":" + Mirror(m_branchRef),
                                         "+refs/tags/*:" + m_mirror + "tags/*",
                                         "+refs/checkouts/*:" + m_mirror + "checkouts/*"};
  std::array<char*, 3> texts = {refspecs[0].data(), refspecs[1].data(), refspecs[2].data()};
  const git_strarray list = {texts.data(), texts.size()};
  git_fetch_options options = GIT_FETCH_OPTIONS_INIT;
  options.prune = GIT_FETCH_PRUNE;
  options.download_tags = GIT_REMOTE_DOWNLOAD_TAGS_NONE;
  options.update_fetchhead = 0;
  m_credentials.StartOver();
  m_credentials.Join(options.callbacks);
  const Handle<git_remote> remote = Remote();
  const WriteLock lock(m_repository.Folder(), {WriteLock::kOwnRefs, "packed-refs.lock"});
  Check(git_remote_fetch(remote.get(), &list, &options, "fetch"), m_address.Shown());
}

std::optional<git_oid> RemoteRefs::Read(const std::string& name) { return m_local.Read(Mirror(name)); }

std::vector<std::pair<std::string, git_oid>> RemoteRefs::List(const std::string& prefix) {
  auto refs = m_local.List(Mirror(prefix));
  for (auto& [name, id] : refs) name = "refs/" + name.substr(m_mirror.size());
  return refs;
}

bool RemoteRefs::Change(const std::string& name, const std::optional<git_oid>& from,
                        const std::optional<git_oid>& to, const git_signature* who, const char* why) {
  if (!ChangeThere(name, from, to, who, why)) {
    Refresh();
    return false;
  }
  try {
    // Only a copy of what the remote says: when another process has just made a newer one, so be it.
    const std::string mirror = Mirror(name);
    m_local.Change(mirror, m_local.Read(mirror), to, who, why);
  } catch (const automation::Error&) {  // it is done where it counts; the next fetch brings the copy
  }
  return true;
}

bool RemoteRefs::ChangeThere(const std::string& name, const std::optional<git_oid>& from,
                             const std::optional<git_oid>& to, const git_signature* who, const char* why) {
  if (m_there == nullptr) return Push(name, from, to, who);
  // The library's push to a folder would replace a ref without a look at what it says by then.
  if (m_there->IsCheckedOut(name))
    Fail(Number::kPermissionDenied, m_address.Shown() +
                                        ": the branch is checked out in that repository. Give it a "
                                        "bare repository to push to");
  if (to) CopyObject(m_repository, *m_there, *to);
  return LocalRefs(*m_there).Change(name, from, to, who, why);
}

bool RemoteRefs::Push(const std::string& name, const std::optional<git_oid>& from,
                      const std::optional<git_oid>& to, const git_signature* who) {
  std::string refusal;
  if (to) {
    const OutgoingRef outgoing(m_local, *to, who);
    // A label that is put anew may go back in history; a branch never does.
    const bool isForced = from && name.starts_with("refs/tags/");
    refusal = PushRefspec((isForced ? "+" : "") + outgoing.Name() + ":" + name, name);
  } else {
    refusal = PushRefspec(":" + name, name);
  }
  if (refusal.empty()) return true;
  Refresh();
  const std::optional<git_oid> now = Read(name);
  const bool isSame = now.has_value() == from.has_value() && (!now || git_oid_equal(&*now, &*from) != 0);
  if (isSame) Fail(Number::kPermissionDenied, m_address.Shown() + " refuses " + name + ": " + refusal);
  return false;
}

// The reason of a refusal, "" when it is done.
std::string RemoteRefs::PushRefspec(const std::string& refspec, const std::string& name) {
  std::string text = refspec;
  char* texts[] = {text.data()};
  const git_strarray list = {texts, 1};
  git_push_options options = GIT_PUSH_OPTIONS_INIT;
  PushTalk talk(m_credentials);
  talk.StartOver();
  talk.Join(options.callbacks);
  options.callbacks.push_update_reference = &PushTalk::NoteAnswer;
  const Handle<git_remote> remote = Remote();
  const int code = git_remote_push(remote.get(), &list, &options);
  if (code == GIT_ENONFASTFORWARD) return "it has moved";
  Check(code, m_address.Shown() + ", " + name);
  return talk.Refusal();
}

}  // namespace hearthmake::git
