#pragma once

#include "adapters/git/NewFile.hpp"
#include "adapters/git/Repository.hpp"

namespace hearthmake::git {

// Writes a blob's bytes, as they are, to a file.
void CopyBlob(const Repository& repository, const git_oid& id, NewFile& file);

}  // namespace hearthmake::git
