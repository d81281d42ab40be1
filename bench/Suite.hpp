#pragma once

#include <string>
#include <vector>

#include "Program.hpp"
#include "adapters/posix/DriveMap.hpp"

namespace hearthmake::bench {

// A suite of projects in a temporary place, and the command that builds it.
class Suite {
 public:
  // tools is the folder of the built programs; the place is removed with the object.
  explicit Suite(std::string tools);
  Suite(const Suite&) = delete;
  Suite& operator=(const Suite&) = delete;
  ~Suite();

  // The compiler's logs, of the build as of the yardsticks, go into this folder from now on; it is removed
  // with the object. At first they lie with the suite.
  void KeepLogsIn(const std::string& folder);
  // A copy of an existing suite, its output folders made.
  void CopyFrom(const std::string& folder);
  // A generated suite of so many projects.
  void Generate(int count);

  // hearthmake with the suite's data folder. Ends the benchmark when it fails.
  ProgramRun Run(const std::vector<std::string>& arguments, const Variables& variables = {}) const;
  // A fresh data folder with an empty build.
  void StartAnew();
  ProgramRun Scan() const;
  // Makes what the project files name as sources, as empty files where it is missing.
  void MakeSources() const;
  // The files that each project of the build is made of, its project file first.
  std::vector<std::vector<std::string>> InputFiles() const;
  // Compiles with the stand-in, so that every binary is there, and with the yardstick compiler until no
  // project file changes any more.
  void MakeBinaries() const;
  void SettleFiles() const;
  // Changes a version number in every project file that is built.
  void SpoilFiles(int round) const;

  // What the build runs, one argument list a project, in compile order.
  std::vector<std::vector<std::string>> CompilerCommands() const;
  // The yardsticks' commands write into a folder that this empties; it has to be there.
  void ClearLogs() const;
  Variables ChildVariables() const;
  // The same as a file for ninja.
  std::string WriteNinjaFile() const;
  // For ninja too: an output for each project that is made of its input files.
  std::string WriteNinjaFileOfInputs() const;

  const std::string& Folder() const { return m_sources; }
  int ProjectFileCount() const { return static_cast<int>(ProjectFiles().size()); }

 private:
  std::vector<std::string> ProjectFiles() const;
  void MakeOutputFolders();
  // Of a project file.
  std::vector<std::string> SourcesOf(const std::string& path) const;
  // POSIX paths, in compile order.
  std::vector<std::string> BuiltProjects() const;
  std::string GoodLog() const { return m_tools + "/tools/vb6/vb6-goodlog"; }

  std::string m_tools;
  std::string m_place;
  std::string m_scratch;
  std::string m_sources;
  std::string m_data;
  posix::DriveMap m_drives;
  std::vector<std::string> m_driveOptions;
};

}  // namespace hearthmake::bench
