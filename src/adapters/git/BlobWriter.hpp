#pragma once

#include <string>

#include "adapters/git/Repository.hpp"

namespace hearthmake::git {

// Stores a file's bytes, as they are, and gives their id. A large file goes piece by piece. Error 53 when
// there is no such file, 75 when it changes meanwhile.
git_oid WriteBlob(const Repository& repository, const std::string& path, const std::string& shownPath);

// The id that the bytes of an open file would have, without storing them.
git_oid HashFile(int file, std::int64_t size, const std::string& shownPath);

}  // namespace hearthmake::git
