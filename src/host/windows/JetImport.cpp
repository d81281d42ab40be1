#include "host/moving/JetImport.hpp"

#include "host/HostError.hpp"

namespace hearthmake::host {

JetSummary ImportJet(const std::string& /*file*/, const std::string& /*target*/, bool /*isReplacing*/,
                     const JetProgress& /*progress*/, const std::string& /*readingProgram*/) {
  throw HostError("Jet databases can't be imported on Windows.",
                  "Import it on Linux, then move the builds with: hearthmake export BUILD FILE.json");
}

bool LooksLikeJet(const std::string& /*file*/) { return false; }

std::string JetAdvice(const std::string& /*file*/) {
  return "It must be imported, which can be done on Linux: hearthmake import FILE.mdb\n"
         "Choose another data folder with --data DIR.";
}

}  // namespace hearthmake::host
