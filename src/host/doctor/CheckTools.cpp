#include "host/doctor/Checks.hpp"
#include "host/system/Programs.hpp"

namespace hearthmake::host {

// Nothing that a build needs: source control is built in.
void CheckTools(Session& /*session*/, Findings& findings) {
  const std::string dot = FindTool("dot");
  if (dot.empty()) {
    findings.Note("The program dot of Graphviz is not found; it draws what `hearthmake graph` writes.",
                  "PATH", "apt-get install graphviz");
  } else {
    findings.Ok("The program dot draws what `hearthmake graph` writes.", dot);
  }
  const std::string git = FindTool("git");
  if (git.empty()) {
    findings.Note("The program git is not found. Source control works without it; people rarely do.", "PATH",
                  "apt-get install git");
  } else {
    findings.Ok("The program git is there for those who work on the sources.", git);
  }
}

}  // namespace hearthmake::host
