#pragma once

#include <cstdint>
#include <queue>
#include <set>
#include <string>
#include <vector>

#include "adapters/git/LibGit2.hpp"
#include "adapters/git/Repository.hpp"

namespace hearthmake::git {

// The commits from one on, newest first, read as they are asked for: a long history costs nothing until
// somebody goes down it. (The library's own walk reads all of it before its first answer when it sorts.)
class HistoryWalk {
 public:
  HistoryWalk(const Repository& repository, const git_oid& start);

  // Null behind the oldest.
  Handle<git_commit> Next();

 private:
  struct Waiting {
    std::int64_t time = 0;
    std::uint64_t turn = 0;  // of those of one second, the one that was found first
    git_oid id{};

    bool operator<(const Waiting& other) const {
      return time != other.time ? time < other.time : turn > other.turn;
    }
  };
  struct Less {
    bool operator()(const git_oid& a, const git_oid& b) const { return git_oid_cmp(&a, &b) < 0; }
  };

  void Add(const git_oid& id);

  const Repository& m_repository;
  std::priority_queue<Waiting> m_waiting;
  std::set<git_oid, Less> m_seen;
  std::uint64_t m_turn = 0;
};

// The id of what is at that path in a commit, by this very spelling; zero when nothing is.
git_oid IdAt(const Repository& repository, const git_commit* commit, const ItemPath& path);

// Whether the commit gave the item another content than all of its parents have.
bool Touches(const Repository& repository, const git_commit* commit, const ItemPath& path);

}  // namespace hearthmake::git
