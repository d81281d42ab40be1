#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>

#include "adapters/git/GetPlan.hpp"

namespace hearthmake::git {

// When each file of a plan was last changed: the time (seconds since 1970, UTC) of the newest commit, from
// the given one on, that gave it another content than its parents have. By the path from the item on.
std::unordered_map<std::string, std::int64_t> FindLastChanges(const Repository& repository,
                                                              const git_oid& commitId, const TreeItem& item,
                                                              const GetPlan& plan);

}  // namespace hearthmake::git
