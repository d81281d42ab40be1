#pragma once

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <vector>

#include "adapters/posix/PosixFileSystem.hpp"
#include "foundation/Paths.hpp"
#include "support/HostCommand.hpp"

namespace hearthmake::support {

// A copy of the project files of a real suite, in the world of a command: the sources that they name are made
// as empty files, and the folders of their binaries too. The compiler is the one that comes along, which is
// told not to read either.
class CairoSuite {
 public:
  // The suite lies beside the project; HEARTHMAKE_SUITES names another folder of suites.
  static std::filesystem::path Place() {
    const char* named = std::getenv("HEARTHMAKE_SUITES");
    return std::filesystem::path(named != nullptr ? named : SOURCE_DIRECTORY "/../shared/solutions") /
           "cairo";
  }
  static bool IsThere() { return std::filesystem::exists(Place()); }

  // Copies the suite and makes the build "Cairo" of it.
  explicit CairoSuite(HostCommand& command) : m_command(command) {
    namespace fs = std::filesystem;
    fs::copy(Place(), Folder(), fs::copy_options::recursive);
    command.environment = {{"VB6_STANDIN_SKIP_SOURCES", "1"},
                           {"VB6_STANDIN_SKIP_REFERENCES", "1"},
                           {"VB6_STANDIN_SEED", "cairo"}};
    std::vector<std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(Folder())) {
      fs::permissions(entry.path(), fs::perms::owner_all, fs::perm_options::add);
      if (entry.path().extension() == ".vbp") files.push_back(entry.path());
    }
    MakeFiles(files);
    Run({"new", "Cairo"});
    Run({"settings", "VBExe", BINARY_DIRECTORY "/tools/vb6/vb6"});
    Run({"scan", "Cairo", Folder()});
  }

  std::string Folder() const { return m_command.root.Path("cairo"); }
  CommandResult Run(HostCommand::Arguments arguments) {
    arguments.insert(arguments.begin(), m_drives.begin(), m_drives.end());
    return m_command.Run(arguments);
  }
  // The POSIX path of a file that a project names.
  std::string Posix(const std::string& dosPath) const { return m_map->ToPosix(dosPath).value_or(""); }

  // The files in the rows of a key, as DOS paths; a row may be "name; file".
  std::vector<std::string> FilesOf(const std::string& projectFile, const std::string& key) const {
    std::vector<std::string> paths;
    std::ifstream stream(projectFile, std::ios::binary);
    for (std::string row; std::getline(stream, row);) {
      std::erase(row, '\r');
      if (!row.starts_with(key + "=")) continue;
      row = row.substr(std::max(row.find('='), row.find(';') == std::string::npos ? 0 : row.find(';')) + 1);
      std::erase(row, '"');
      row.erase(0, std::min(row.find_first_not_of(' '), row.size()));
      if (!row.empty()) paths.push_back(AbsolutePath(FolderPart(m_map->FromPosix(projectFile)), row));
    }
    return paths;
  }

 private:
  void MakeFiles(const std::vector<std::string>& projectFiles) {
    m_map = std::make_shared<posix::DriveMap>(posix::DriveMap::BuiltIn(m_command.Data()));
    std::set<std::string> folders;
    std::set<std::string> sources;
    for (const std::string& file : projectFiles) {
      for (const std::string& folder : FilesOf(file, "Path32")) folders.insert(folder + "\\");
      for (const char* key : {"Class", "Module", "Form", "UserControl", "PropertyPage", "Designer",
                              "ResFile32", "RelatedDoc"}) {
        for (const std::string& source : FilesOf(file, key)) sources.insert(source);
      }
    }
    for (const auto* paths : {&folders, &sources}) {
      for (const std::string& path : *paths) AddDrive(path);
    }
    posix::PosixFileSystem files(m_map);
    for (const std::string& folder : folders) files.CreateFolders(folder);
    for (const std::string& source : sources) {
      if (!m_map->ToPosix(source)) continue;  // on a server
      files.CreateFolders(FolderPart(source));
      files.ReadOrCreate(source);
    }
  }
  void AddDrive(const std::string& path) {
    const char letter = static_cast<char>(std::toupper(static_cast<unsigned char>(path[0])));
    if (path[1] != ':' || m_map->Drive(letter)) return;
    const std::string folder = m_command.root.MakeFolder(std::string("drive_") + letter);
    m_map->SetDrive(letter, folder);
    m_drives.insert(m_drives.end(), {"--drive", std::string(1, letter) + ":=" + folder});
  }

  HostCommand& m_command;
  std::shared_ptr<posix::DriveMap> m_map;
  std::vector<std::string> m_drives;
};

}  // namespace hearthmake::support
