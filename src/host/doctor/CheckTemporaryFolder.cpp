#include <fmt/format.h>

#include <filesystem>

#include "foundation/Apartment.hpp"
#include "host/doctor/Checks.hpp"
#include "host/system/Places.hpp"

namespace hearthmake::host {

void CheckTemporaryFolder(Session& session, Findings& findings) {
  const std::string dosPath = Ports().system->TemporaryFolder();
  // Each process has one of its own in it.
  const std::string own = session.PosixPath(dosPath.substr(0, dosPath.size() - 1));
  const std::string folder = std::filesystem::path(own).parent_path().string();
  constexpr const char* kMend = "hearthmake settings --host TemporaryFolder DIR";
  std::string why;
  // The compiler takes its name on a command line without quotes.
  if (dosPath.find(' ') != std::string::npos) {
    findings.Fail("The name of the folder for temporary files has a blank in it.", folder, kMend);
  } else if (!IsWritable(folder, why)) {
    findings.Fail(fmt::format("The folder for temporary files can't be written: {}.", why), folder, kMend);
  } else {
    findings.Ok("The folder for temporary files can be written.", folder);
  }
}

}  // namespace hearthmake::host
