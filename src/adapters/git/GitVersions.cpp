#include "adapters/git/GitVersions.hpp"

#include <utility>

#include "adapters/git/GitFailure.hpp"
#include "adapters/git/GitItem.hpp"
#include "adapters/git/Message.hpp"
#include "adapters/git/OleTime.hpp"

namespace hearthmake::git {

GitVersion::GitVersion(std::shared_ptr<const Session> session, ItemPath path, LabelEntry entry)
    : m_session(std::move(session)), m_path(std::move(path)), m_entry(std::move(entry)) {}

double GitVersion::Date() const { return OleTime(m_entry.time); }

std::unique_ptr<platform::VSSItem> GitVersion::VSSItem() const {
  return std::make_unique<GitItem>(m_session, m_path, m_entry.commitId);
}

GitVersions::GitVersions(std::shared_ptr<const Session> session, ItemPath path, const git_oid& start)
    : m_session(std::move(session)),
      m_path(std::move(path)),
      m_walk(m_session->Repo(), start),
      m_labels(FindLabels(*m_session, m_path)) {}

std::unique_ptr<platform::VSSVersion> GitVersions::Next() {
  return Operation("VSSVersions.Next", [&]() -> std::unique_ptr<platform::VSSVersion> {
    while (m_ready.empty()) {
      const Handle<git_commit> commit = m_walk.Next();
      if (!commit) return nullptr;
      TakeNextCommit(commit.get());
    }
    auto version = std::make_unique<GitVersion>(m_session, m_path, std::move(m_ready.front()));
    m_ready.pop_front();
    return version;
  });
}

void GitVersions::TakeNextCommit(const git_commit* commit) {
  for (const LabelEntry& label : m_labels) {
    if (git_oid_equal(&label.commitId, git_commit_id(commit)) != 0) m_ready.push_back(label);
  }
  if (!Touches(m_session->Repo(), commit, m_path)) return;
  const git_signature* author = git_commit_author(commit);
  const char* message = git_commit_message(commit);
  LabelEntry version;
  version.comment = ReadableText(message == nullptr ? "" : message);
  while (version.comment.ends_with('\n')) version.comment.pop_back();
  version.user = ReadableText(author->name);
  version.time = author->when.time;
  version.commitId = *git_commit_id(commit);
  m_ready.push_back(std::move(version));
}

}  // namespace hearthmake::git
