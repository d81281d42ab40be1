#include <fmt/format.h>

#include <algorithm>
#include <set>

#include "automation/Text.hpp"
#include "foundation/Apartment.hpp"
#include "foundation/Paths.hpp"
#include "host/builds/BinaryState.hpp"
#include "host/doctor/Checks.hpp"
#include "host/text/ShellQuote.hpp"

namespace hearthmake::host {

namespace {

// Comes with Windows or is installed on it, and is no part of what is built here.
bool IsOfSystem(const std::string& path) {
  const std::string lower = automation::Lower(path);
  const auto has = [&lower](const char* part) { return lower.find(part) != std::string::npos; };
  return lower.find('\\') == std::string::npos || has("\\system32\\") || has("\\syswow64\\") ||
         has("\\winnt\\") || has("\\program files") || has("\\common files\\");
}

bool IsThere(const std::string& path) {
  return !path.empty() && Ports().files->FileExists(std::string(WithoutResourceIndex(path)));
}

class References {
 public:
  References(Session& session, const ExaminedBuild& examined, Findings& findings)
      : m_session(session),
        m_examined(examined),
        m_findings(findings),
        m_hasSystemRegistry(!session.Settings().WinePrefix().empty()) {
    for (const auto& project : examined.projects) m_ids.insert(project->Id());
  }

  void Look() {
    for (const auto& project : m_examined.projects) {
      std::size_t position = 0;
      for (const auto& reference : AllReferences(*project)) LookAt(*project, *reference, ++position);
    }
    if (m_unknown > 0) {
      m_findings.Note(
          fmt::format("{} references to libraries of Windows can't be looked up without a Wine prefix.",
                      m_unknown),
          "", "hearthmake settings --host WinePrefix DIR");
    }
  }

 private:
  std::string Mend(const Project& project, std::size_t position) const {
    return fmt::format("hearthmake refs {} --drop {} {}", m_examined.name, ShellQuote(project.Name()),
                       position);
  }

  void LookAt(Project& project, Reference& reference, std::size_t position) {
    if (!reference.IsExternal()) {
      if (m_ids.contains(reference.ReferencedProject())) return;
      m_findings.Fail(fmt::format("{} references a project that is not in the build.", project.Name()),
                      m_session.PosixPath(project.ProjectPath()), Mend(project, position));
      return;
    }
    if (reference.GUID().empty()) {  // a row that could not be taken apart
      m_findings.Warn(fmt::format("{} has a reference that is not understood: {}", project.Name(),
                                  Printable(reference.ReferenceString())),
                      m_session.PosixPath(project.ProjectPath()), Mend(project, position));
      return;
    }
    LookAtLibrary(project, reference, position);
  }

  void LookAtLibrary(Project& project, Reference& reference, std::size_t position) {
    const std::string library =
        "{" + automation::ReplaceAll(automation::ReplaceAll(reference.GUID(), "{", ""), "}", "") + "}";
    const std::string registered = RegisteredLibrary(library, reference.BinaryVersion());
    if (IsThere(registered)) return;
    const std::string path = project.ResolveLibrary(reference.Path());
    const std::string name = reference.Description().empty() ? reference.Path() : reference.Description();
    const std::string what =
        fmt::format("{} references {} {}", project.Name(), Printable(name), reference.BinaryVersion());
    if (!registered.empty()) {
      m_findings.Warn(what + ", and the file that is registered for it is missing.",
                      m_session.PosixPath(registered), Mend(project, position));
    } else if (IsThere(path)) {
      if (m_hasSystemRegistry) {
        m_findings.Warn(what + ", which is there and not registered.", m_session.PosixPath(path),
                        fmt::format("wine regsvr32 {}", ShellQuote(path)));
      }
    } else if (IsOfSystem(reference.Path()) && !m_hasSystemRegistry) {
      ++m_unknown;
    } else {
      m_findings.Fail(what + ", which is neither registered nor there.", m_session.PosixPath(path),
                      Mend(project, position));
    }
  }

  Session& m_session;
  const ExaminedBuild& m_examined;
  Findings& m_findings;
  bool m_hasSystemRegistry;
  std::set<std::int32_t> m_ids;
  std::size_t m_unknown = 0;
};

}  // namespace

void CheckReferences(Session& session, const ExaminedBuild& examined, Findings& findings) {
  References(session, examined, findings).Look();
}

}  // namespace hearthmake::host
