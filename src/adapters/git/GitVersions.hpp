#pragma once

#include <deque>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "adapters/git/HistoryWalk.hpp"
#include "adapters/git/Labels.hpp"
#include "adapters/git/Session.hpp"
#include "platform/SourceControl.hpp"

namespace hearthmake::git {

// One entry of the history.
class GitVersion : public platform::VSSVersion {
 public:
  GitVersion(std::shared_ptr<const Session> session, ItemPath path, LabelEntry entry);

  std::string Label() const override { return m_entry.label; }
  std::string Username() const override { return m_entry.user; }
  double Date() const override;
  std::string Comment() const override { return m_entry.comment; }
  std::unique_ptr<platform::VSSItem> VSSItem() const override;

 private:
  std::shared_ptr<const Session> m_session;
  ItemPath m_path;
  LabelEntry m_entry;  // without a label for a version
};

// The commits that touch an item, from one on, and its labels. A label stands before the commit that it was
// put on, whether that one touched the item or not.
class GitVersions : public platform::VSSVersions {
 public:
  GitVersions(std::shared_ptr<const Session> session, ItemPath path, const git_oid& start);

  std::unique_ptr<platform::VSSVersion> Next() override;

 private:
  void TakeNextCommit(const git_commit* commit);

  std::shared_ptr<const Session> m_session;
  ItemPath m_path;
  HistoryWalk m_walk;
  std::vector<LabelEntry> m_labels;
  std::deque<LabelEntry> m_ready;  // what the last commit has brought
};

}  // namespace hearthmake::git
