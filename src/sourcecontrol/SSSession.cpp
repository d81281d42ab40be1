#include "sourcecontrol/SSSession.hpp"

#include "automation/Text.hpp"
#include "foundation/Apartment.hpp"
#include "sourcecontrol/SSProject.hpp"

namespace hearthmake {

platform::VSSDatabase& SSSession::For(const SSProject& project) {
  const bool isSame = m_database && automation::EqualsIgnoreCase(m_srcSafeIni, project.SrcSafeIni()) &&
                      m_user == project.User() && m_password == project.Password();
  if (!isSame) {
    m_database.reset();  // one session at a time, also when the next one can't be opened
    m_srcSafeIni = project.SrcSafeIni();
    m_user = project.User();
    m_password = project.Password();
    m_database = Ports().sources->Open(m_srcSafeIni, m_user, m_password);
  }
  return *m_database;
}

}  // namespace hearthmake
