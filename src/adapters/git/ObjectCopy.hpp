#pragma once

#include "adapters/git/Repository.hpp"

namespace hearthmake::git {

// Copies an object, and all that it is made of and that is missing there, from one repository to another: a
// commit without its parents, a tag, a tree, a blob. What an object needs is there before the object is.
// Error 57 when a parent is missing there.
void CopyObject(const Repository& from, const Repository& to, const git_oid& id);

}  // namespace hearthmake::git
