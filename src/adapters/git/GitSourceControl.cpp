#include "adapters/git/GitSourceControl.hpp"

#include <utility>

#include "adapters/git/GitFailure.hpp"
#include "adapters/git/GitItem.hpp"

namespace hearthmake::git {

namespace {

class GitDatabase : public platform::VSSDatabase {
 public:
  explicit GitDatabase(std::shared_ptr<const Session> session) : m_session(std::move(session)) {}

  std::unique_ptr<platform::VSSItem> VSSItem(std::string_view strSpec, bool bDeleted) override {
    return Operation("VSSDatabase.VSSItem", [&]() -> std::unique_ptr<platform::VSSItem> {
      if (bDeleted) Fail(Number::kInvalidArgument, std::string(strSpec) + ": deleted items can't be named");
      return GitItem::Find(m_session, ItemPath::Parse(strSpec));
    });
  }

 private:
  std::shared_ptr<const Session> m_session;
};

}  // namespace

GitSourceControl::GitSourceControl(PathMap toPosix, Options options)
    : m_toPosix(std::move(toPosix)), m_options(std::move(options)) {}

GitSourceControl::~GitSourceControl() = default;

std::unique_ptr<platform::VSSDatabase> GitSourceControl::Open(std::string_view strSrcSafeIni,
                                                              std::string_view strUser,
                                                              std::string_view strPassword) {
  return Operation("VSSDatabase.Open", [&]() -> std::unique_ptr<platform::VSSDatabase> {
    return std::make_unique<GitDatabase>(
        std::make_shared<Session>(strSrcSafeIni, strUser, strPassword, m_toPosix, m_options));
  });
}

}  // namespace hearthmake::git
