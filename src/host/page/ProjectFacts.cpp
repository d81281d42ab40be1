#include "host/page/ProjectFacts.hpp"

#include <array>
#include <string_view>

#include "automation/Error.hpp"
#include "automation/Text.hpp"
#include "foundation/Apartment.hpp"

namespace hearthmake::host {

namespace {

// The project file itself is asked: the compiler counts its revision up, not the build's.
std::string RowOf(const std::string& file, std::string_view marker) {
  std::size_t start = file.starts_with(marker) ? 0 : file.find("\n" + std::string(marker));
  if (start == std::string::npos) return "0";
  start = file.find('=', start) + 1;
  const std::size_t end = file.find_first_of("\r\n", start);
  return std::string(automation::Trim(std::string_view(file).substr(start, end - start)));
}

std::string VersionOf(const std::string& path) {
  try {
    const std::string file = Ports().files->Read(path);
    return RowOf(file, "MajorVer=") + "." + RowOf(file, "MinorVer=") + "." + RowOf(file, "RevisionVer=");
  } catch (const automation::Error&) {
    return {};
  }
}

bool HasLibrary(Project& project) {
  try {
    return project.ISActiveX();
  } catch (const automation::Error&) {
    return false;  // of no known type
  }
}

void ReadLibrary(const std::string& path, ProjectFacts& facts) {
  try {
    const platform::TypeLibInfo library = Ports().typeLibs->Read(path);
    facts.library = library.guid;
    facts.libraryVersion =
        automation::Hex(library.majorVersion) + "." + automation::Hex(library.minorVersion);
  } catch (const automation::Error&) {
    return;
  }
}

}  // namespace

ProjectFacts ReadFacts(Project& project) {
  ProjectFacts facts;
  facts.version = VersionOf(project.ProjectPath());
  const std::string& binary = project.BinaryPath();
  facts.size = Ports().files->Stamp(binary).size;
  if (facts.size >= 0 && HasLibrary(project)) ReadLibrary(binary, facts);
  return facts;
}

}  // namespace hearthmake::host
