#pragma once

#include <memory>
#include <string_view>

#include "adapters/git/Session.hpp"
#include "platform/SourceControl.hpp"

namespace hearthmake::git {

// Source control in git repositories. What a database's ini file says is with DatabaseSettings; the manual is
// docs/sourcecontrol.md. It and all that it opens belong to one thread.
class GitSourceControl : public platform::SourceControl {
 public:
  // toPosix gives the POSIX path of a DOS path, "" when it can't lead anywhere.
  explicit GitSourceControl(PathMap toPosix, Options options = {});
  ~GitSourceControl() override;

  // With a remote, this fetches. The user and password are offered to its server; the repository itself asks
  // for none. Errors, source "VSSDatabase.Open": 48 libgit2 can't be loaded, 53 no such ini file, 76 no
  // repository or branch, 5 a user that can't be one, 70 credentials refused, 57 the remote can't be reached.
  std::unique_ptr<platform::VSSDatabase> Open(std::string_view strSrcSafeIni, std::string_view strUser,
                                              std::string_view strPassword) override;

 private:
  PathMap m_toPosix;
  Options m_options;
};

}  // namespace hearthmake::git
