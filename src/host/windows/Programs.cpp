#include "host/system/Programs.hpp"

#include <sstream>

#include "foundation/Apartment.hpp"
#include "host/system/Places.hpp"

namespace hearthmake::host {

namespace {

// A name without extension stands for a program.
std::string Existing(const std::string& path) {
  for (const char* extension : {"", ".exe"}) {
    if (Ports().files->FileExists(path + extension)) return path + extension;
  }
  return {};
}

}  // namespace

// As the system does: a path with blanks and without quotes ends at any of them.
FoundProgram FindProgram(Session& session, const std::string& commandLine) {
  session.Library();
  if (commandLine.starts_with('"')) {
    const std::string path = Existing(commandLine.substr(1, commandLine.find('"', 1) - 1));
    return path.empty() ? FoundProgram{} : FoundProgram{ProgramKind::Native, path};
  }
  for (std::size_t end = commandLine.find(' ');; end = commandLine.find(' ', end + 1)) {
    const std::string name = commandLine.substr(0, end);
    const bool isName = name.find_first_of("\\/:") == std::string::npos;
    const std::string path = isName ? FindTool(name) : Existing(name);
    if (!path.empty()) return {ProgramKind::Native, path};
    if (end == std::string::npos) return {};
  }
}

std::string FindTool(const std::string& name) {
  std::istringstream folders(EnvironmentValue("PATH"));
  for (std::string folder; std::getline(folders, folder, ';');) {
    const std::string path = Existing(folder + "\\" + name);
    if (!folder.empty() && !path.empty()) return path;
  }
  return {};
}

}  // namespace hearthmake::host
