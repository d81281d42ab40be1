#pragma once

#include <memory>
#include <string>

#include "platform/SourceControl.hpp"

namespace hearthmake {

class SSProject;

// The open session of one operation. Consecutive projects of the same database (ini file without regard to
// case, user, password) share one; a project of another one closes it first. Nothing that came out of a
// session may outlive it.
class SSSession {
 public:
  // The session on the project's database. Errors of the source control.
  platform::VSSDatabase& For(const SSProject& project);

 private:
  std::string m_srcSafeIni;
  std::string m_user;
  std::string m_password;
  std::unique_ptr<platform::VSSDatabase> m_database;
};

}  // namespace hearthmake
