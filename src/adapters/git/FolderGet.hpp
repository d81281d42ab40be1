#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "adapters/git/GetPlan.hpp"
#include "adapters/git/LocalFolder.hpp"
#include "adapters/git/Session.hpp"
#include "adapters/git/StatCache.hpp"

namespace hearthmake::git {

// Copies an item, as it was in a commit, to a local path (POSIX), as the flags (platform::SourceFlags) want
// it. Each file is whole at every moment. Error 18 when the host wants it to stop, 75 for what would leave
// the folder or is in the way.
void GetItem(const Session& session, const git_oid& commitId, const TreeItem& item,
             const std::string& localPath, std::int32_t flags);

}  // namespace hearthmake::git
