#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "adapters/git/Session.hpp"
#include "platform/SourceControl.hpp"

namespace hearthmake::git {

// A folder or file of the branch: as it is whenever it is asked, or as it was in one commit.
class GitItem : public platform::VSSItem {
 public:
  // The path in the spelling of its tree. Without a commit it is the item of today.
  GitItem(std::shared_ptr<const Session> session, ItemPath path, std::optional<git_oid> commitId);

  // Names without regard to case. Error 53 when there is no such item.
  static std::unique_ptr<GitItem> Find(std::shared_ptr<const Session> session, const ItemPath& path);

  std::string Spec() const override { return m_path.Spec(); }
  void Get(std::string_view strLocal, std::int32_t lngFlags) override;
  std::unique_ptr<platform::VSSVersions> Versions() override;
  void Label(std::string_view strLabel, std::string_view strComment) override;
  // A folder is never checked out.
  platform::CheckoutState IsCheckedOut() override;
  std::vector<platform::VSSCheckout> Checkouts() override;
  void Checkout(std::string_view strComment, std::string_view strLocal, std::int32_t lngFlags) override;
  void Checkin(std::string_view strComment, std::string_view strLocal, std::int32_t lngFlags) override;

 private:
  git_oid CommitId() const;
  TreeItem Item(const git_oid& commitId) const;
  // A DOS path, the registered working folder when it is empty.
  std::string LocalPath(std::string_view strLocal) const;
  void GetTo(std::string_view strLocal, std::int32_t flags) const;
  void RequireFile() const;

  std::shared_ptr<const Session> m_session;
  ItemPath m_path;
  std::optional<git_oid> m_commitId;
};

}  // namespace hearthmake::git
