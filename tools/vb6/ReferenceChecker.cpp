#include "vb6/ReferenceChecker.hpp"

#include <array>

#include "automation/Error.hpp"
#include "vb6/DosPath.hpp"
#include "vb6/Text.hpp"

namespace hearthmake::vb6 {
namespace {

// Libraries that Windows or a set-up puts there; a row without a folder is found by registration.
bool IsSystemLibrary(std::string_view file) {
  constexpr std::array<std::string_view, 3> kFolders = {"\\system32\\", "\\syswow64\\", "\\program files"};
  if (file.find('\\') == std::string_view::npos) return true;
  const std::string lower = "\\" + Lower(file);
  for (const std::string_view folder : kFolders) {
    if (lower.find(folder) != std::string::npos) return true;
  }
  return false;
}

// A path may name one of several libraries in a file: C:\x.dll\3.
std::string_view WithoutResourceNumber(std::string_view path) {
  return ParseNumber(FileNameOf(path)) ? FolderOf(path) : path;
}

std::string Named(const std::string& guid, const std::string& version) {
  return guid + " version " + version;
}

}  // namespace

std::string ReferenceChecker::Check(const ProjectFile& project, const std::string& projectFolder,
                                    const std::string& outputFolder) {
  for (const ReferenceRow& row : project.References()) {
    const bool searched = row.kind == ReferenceKind::Control && row.file.find('\\') == std::string::npos;
    const std::string path =
        searched ? FindControl(row, projectFolder, outputFolder) : JoinPath(projectFolder, row.file);
    if (Exists(path)) {
      if (row.kind == ReferenceKind::Project) continue;
      if (std::string problem = CheckLibrary(row, path); !problem.empty()) return problem;
    } else if (row.kind == ReferenceKind::Project || !m_assumeSystemLibraries || !IsSystemLibrary(row.file)) {
      return "Can't find project or library: '" + path + "'";
    }
  }
  return {};
}

std::string ReferenceChecker::CheckLibrary(const ReferenceRow& row, const std::string& path) const {
  platform::TypeLibInfo info;
  try {
    info = m_libraries.Read(path);
  } catch (const automation::Error& error) {
    return "Can't read the type library of '" + path + "': " + error.Description();
  }
  const std::string version = Hex(info.majorVersion) + "." + Hex(info.minorVersion);
  if (EqualNoCase(info.guid, row.guid) && EqualNoCase(version, row.version)) return {};
  return "The type library of '" + path + "' is " + Named(info.guid, version) + ", the project names " +
         Named(row.guid, row.version);
}

std::string ReferenceChecker::FindControl(const ReferenceRow& row, const std::string& projectFolder,
                                          const std::string& outputFolder) const {
  const std::string beside = JoinPath(projectFolder, row.file);
  return Exists(beside) ? beside : JoinPath(outputFolder, row.file);
}

bool ReferenceChecker::Exists(const std::string& path) const {
  return m_files.FileExists(WithoutResourceNumber(path));
}

}  // namespace hearthmake::vb6
