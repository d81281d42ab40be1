#pragma once

#include "adapters/git/Repository.hpp"

namespace hearthmake::git {

// The root tree of a commit with other content for one file, which is there. Only the folders on the way to
// it are written anew.
git_oid ReplaceFile(const Repository& repository, const git_oid& commitId, const TreeItem& file,
                    const git_oid& blobId);

}  // namespace hearthmake::git
