#pragma once

#include "adapters/git/Session.hpp"

namespace hearthmake::git {

// After a check-in into a repository whose work tree shows that branch: the index, and a file of the work
// tree that was unmodified, become the new version. Everything else there stays as it is. Error 70 when git
// holds the index for long; the check-in is done then.
void FollowInWorkTree(const Session& session, const TreeItem& before, const git_oid& blobId);

}  // namespace hearthmake::git
