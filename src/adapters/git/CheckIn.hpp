#pragma once

#include <string>
#include <string_view>

#include "adapters/git/Session.hpp"

namespace hearthmake::git {

// Makes a local file the newest version of a file that the session's user has checked out, in one commit, and
// ends the check-out unless it is to be kept. A file that is unchanged makes no version. Error 70 when the
// user doesn't hold the file.
struct CheckInRequest {
  ItemPath path;
  std::string localPath;  // POSIX
  std::string shownPath;  // the same for the texts of errors
  std::string_view comment;
  bool isKept = false;
};

void CheckIn(const Session& session, const CheckInRequest& request);

}  // namespace hearthmake::git
