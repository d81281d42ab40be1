#include "adapters/git/CheckIn.hpp"

#include <algorithm>
#include <chrono>
#include <thread>

#include "adapters/git/BlobWriter.hpp"
#include "adapters/git/Checkouts.hpp"
#include "adapters/git/GitFailure.hpp"
#include "adapters/git/Message.hpp"
#include "adapters/git/TreeEdit.hpp"
#include "adapters/git/WorkTreeIndex.hpp"

namespace hearthmake::git {

namespace {

// How often a branch may move away under us before we give up, and how long we keep out of the others' way.
constexpr int kAttempts = 200;
constexpr auto kLongestPause = std::chrono::milliseconds(100);

git_oid WriteCommit(const Session& session, const git_oid& parentId, const git_oid& treeId,
                    std::string_view comment) {
  const Handle<git_tree> tree = session.Repo().Tree(treeId);
  const Handle<git_commit> parent = session.Repo().Commit(parentId);
  const git_commit* parents[] = {parent.get()};
  const Handle<git_signature> who = session.Signature();
  const std::string message = PrintMessage(comment, {});
  git_oid id{};
  Check(git_commit_create(&id, session.Repo().Get(), nullptr, who.get(), who.get(), nullptr, message.c_str(),
                          tree.get(), 1, parents),
        "commit");
  return id;
}

TreeItem FileAt(const Session& session, const git_oid& tip, const ItemPath& path) {
  const std::optional<TreeItem> file = session.Repo().Find(tip, path);
  if (!file || file->IsFolder())
    Fail(Number::kNotFound, path.Spec() + " is no file of the branch any more: somebody has removed it");
  return *file;
}

// One attempt. False when the branch has moved meanwhile.
bool TryToCommit(const Session& session, const CheckInRequest& request, const git_oid& blobId) {
  const git_oid tip = session.Tip();
  const TreeItem file = FileAt(session, tip, request.path);
  if (git_oid_equal(&file.id, &blobId) != 0) return true;
  const git_oid treeId = ReplaceFile(session.Repo(), tip, file, blobId);
  const git_oid commitId = WriteCommit(session, tip, treeId, request.comment);
  const Handle<git_signature> who = session.Signature();
  if (!session.Refs().Change(session.BranchRef(), tip, commitId, who.get(), "check-in")) return false;
  if (!session.HasRemote()) FollowInWorkTree(session, file, blobId);
  return true;
}

}  // namespace

void CheckIn(const Session& session, const CheckInRequest& request) {
  const std::optional<CheckoutEntry> checkout = FindCheckout(session, request.path);
  if (!checkout || !IsHeldByUser(session, *checkout))
    Fail(Number::kPermissionDenied, request.path.Spec() + " is not checked out to " + session.User().name);
  const git_oid blobId = WriteBlob(session.Repo(), request.localPath, request.shownPath);
  int attempt = 0;
  while (!TryToCommit(session, request, blobId)) {
    if (++attempt == kAttempts)
      Fail(Number::kGitFailed, request.path.Spec() + ": the branch moves faster than a check-in; try again");
    std::this_thread::sleep_for(std::min(kLongestPause, std::chrono::milliseconds(attempt)));
  }
  if (!request.isKept) EndCheckout(session, request.path, *checkout);
}

}  // namespace hearthmake::git
