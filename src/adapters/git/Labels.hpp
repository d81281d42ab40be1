#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/git/Session.hpp"

namespace hearthmake::git {

// A name that somebody gave to an item as it was in a commit.
struct LabelEntry {
  std::string label;
  ItemPath path;  // the item that it was put on; it holds for all below
  std::string comment;
  std::string user;
  std::int64_t time = 0;  // seconds since 1970, UTC
  git_oid commitId{};
};

// Labels are tags. An annotated tag made here says in its message which label it is and of which item; any
// other tag is a label of the root, by its own name.

// Those that an item shows: put on it or on one above it. Its own first, of these the newest.
std::vector<LabelEntry> FindLabels(const Session& session, const ItemPath& path);

// Puts a label on the item as it is in the commit. One that the item has already is moved there. Error 5 for
// an empty label.
void PutLabel(const Session& session, const TreeItem& item, const git_oid& commitId, std::string_view label,
              std::string_view comment);

}  // namespace hearthmake::git
