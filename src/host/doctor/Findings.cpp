#include "host/doctor/Findings.hpp"

#include <algorithm>

namespace hearthmake::host {

const char* SeverityName(Severity severity) {
  switch (severity) {
    case Severity::Ok: return "ok";
    case Severity::Note: return "note";
    case Severity::Warning: return "warning";
    case Severity::Error: return "error";
  }
  return "";
}

std::size_t Findings::Count(Severity severity) const {
  return static_cast<std::size_t>(
      std::count_if(m_findings.begin(), m_findings.end(),
                    [&](const Finding& finding) { return finding.severity == severity; }));
}

void Findings::Add(Severity severity, std::string what, std::string where, std::string mend) {
  m_findings.push_back({severity, m_check, std::move(what), std::move(where), std::move(mend)});
}

}  // namespace hearthmake::host
