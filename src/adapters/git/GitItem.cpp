#include "adapters/git/GitItem.hpp"

#include <filesystem>
#include <utility>

#include "adapters/git/CheckIn.hpp"
#include "adapters/git/Checkouts.hpp"
#include "adapters/git/FolderGet.hpp"
#include "adapters/git/GitFailure.hpp"
#include "adapters/git/GitVersions.hpp"
#include "adapters/git/Labels.hpp"

namespace hearthmake::git {

namespace {

using namespace platform::SourceFlags;

[[noreturn]] void FailNotFound(const Session& session, const ItemPath& path) {
  Fail(Number::kNotFound, path.Spec() + " was not found in " + session.Settings().IniPath());
}

}  // namespace

GitItem::GitItem(std::shared_ptr<const Session> session, ItemPath path, std::optional<git_oid> commitId)
    : m_session(std::move(session)), m_path(std::move(path)), m_commitId(commitId) {}

std::unique_ptr<GitItem> GitItem::Find(std::shared_ptr<const Session> session, const ItemPath& path) {
  const std::optional<TreeItem> found = session->Repo().Find(session->Tip(), path);
  if (!found) FailNotFound(*session, path);
  return std::make_unique<GitItem>(std::move(session), found->path, std::nullopt);
}

git_oid GitItem::CommitId() const { return m_commitId ? *m_commitId : m_session->Tip(); }

TreeItem GitItem::Item(const git_oid& commitId) const {
  const std::optional<TreeItem> found = m_session->Repo().Find(commitId, m_path);
  if (!found) FailNotFound(*m_session, m_path);
  return *found;
}

std::string GitItem::LocalPath(std::string_view strLocal) const {
  if (!strLocal.empty()) return std::string(strLocal);
  const auto folder = m_session->Settings().WorkingFolder(m_session->User(), m_path);
  if (!folder)
    Fail(Number::kPathNotFound,
         m_path.Spec() + " has no working folder for " + m_session->User().name +
             ". Name a local folder, or give it one in the section [working folders] of " +
             m_session->Settings().IniPath());
  return *folder;
}

void GitItem::GetTo(std::string_view strLocal, std::int32_t flags) const {
  const git_oid commitId = CommitId();
  const TreeItem item = Item(commitId);
  std::string local = m_session->ToPosix(LocalPath(strLocal));
  while (local.size() > 1 && local.ends_with('/')) local.pop_back();
  GetItem(*m_session, commitId, item, local, flags);
}

void GitItem::Get(std::string_view strLocal, std::int32_t lngFlags) {
  Operation("VSSItem.Get", [&] { GetTo(strLocal, lngFlags); });
}

std::unique_ptr<platform::VSSVersions> GitItem::Versions() {
  return Operation("VSSItem.Versions", [&]() -> std::unique_ptr<platform::VSSVersions> {
    return std::make_unique<GitVersions>(m_session, m_path, CommitId());
  });
}

void GitItem::Label(std::string_view strLabel, std::string_view strComment) {
  Operation("VSSItem.Label", [&] {
    if (!m_commitId) m_session->Refs().Refresh();
    const git_oid commitId = CommitId();
    PutLabel(*m_session, Item(commitId), commitId, strLabel, strComment);
  });
}

platform::CheckoutState GitItem::IsCheckedOut() {
  return Operation("VSSItem.IsCheckedOut", [&] {
    const auto checkout = m_path.IsRoot() ? std::nullopt : FindCheckout(*m_session, m_path);
    if (!checkout) return platform::CheckoutState::NotCheckedOut;
    return IsHeldByUser(*m_session, *checkout) ? platform::CheckoutState::ByCurrentUser
                                               : platform::CheckoutState::ByOther;
  });
}

std::vector<platform::VSSCheckout> GitItem::Checkouts() {
  return Operation("VSSItem.Checkouts", [&] { return FindCheckoutsAtOrBelow(*m_session, m_path); });
}

void GitItem::RequireFile() const {
  if (m_commitId)
    Fail(Number::kInvalidArgument, m_path.Spec() + " is an old version; only the newest can be worked on");
  if (Item(CommitId()).IsFolder())
    Fail(Number::kInvalidArgument, m_path.Spec() + " is a folder; files are checked out one by one");
}

void GitItem::Checkout(std::string_view strComment, std::string_view strLocal, std::int32_t lngFlags) {
  Operation("VSSItem.Checkout", [&] {
    m_session->Refs().Refresh();
    RequireFile();
    TakeCheckout(*m_session, m_path, strComment);
    if ((lngFlags & kGetMask) == kGetNo) return;
    try {
      // What is checked out is there to be written to.
      GetTo(strLocal, (lngFlags & ~kReadOnlyMask) | kReadOnlyNo);
    } catch (const automation::Error&) {
      if (const auto taken = FindCheckout(*m_session, m_path)) EndCheckout(*m_session, m_path, *taken);
      throw;
    }
  });
}

void GitItem::Checkin(std::string_view strComment, std::string_view strLocal, std::int32_t lngFlags) {
  Operation("VSSItem.Checkin", [&] {
    m_session->Refs().Refresh();
    RequireFile();
    CheckInRequest request;
    request.path = m_path;
    request.shownPath = LocalPath(strLocal);
    request.localPath = m_session->ToPosix(request.shownPath);
    std::error_code ignored;
    if (std::filesystem::is_directory(request.localPath, ignored)) {
      request.shownPath += "\\" + m_path.Names().back();
      request.localPath = m_session->ToPosix(request.shownPath);
    }
    request.comment = strComment;
    request.isKept = (lngFlags & kKeepMask) == kKeepYes;
    CheckIn(*m_session, request);
  });
}

}  // namespace hearthmake::git
