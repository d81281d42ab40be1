#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/FileSystem.hpp"
#include "platform/TypeLibReader.hpp"
#include "vb6/Controls.hpp"
#include "vb6/Identity.hpp"
#include "vb6/PeWriter.hpp"
#include "vb6/ProjectFile.hpp"
#include "vb6/PublicInterface.hpp"

namespace hearthmake::vb6 {

struct Outcome {
  bool succeeded = false;
  std::string log;  // UTF-8, each sentence ending in CR LF
};

// Does with one project what can honestly be done without a compiler: reads it, checks its references and
// the shape of its sources, and writes an image with the type library of its public classes.
class Compiler {
 public:
  // All must outlive the compiler.
  Compiler(platform::FileSystem& files, platform::TypeLibReader& libraries, const Controls& controls);

  // projectPath is absolute; an empty outFolder means the one that the project names. Whatever goes wrong
  // with the project is in the outcome.
  Outcome Compile(const std::string& projectPath, const std::string& outFolder);

 private:
  // One compile's places and names.
  struct Job {
    std::string projectPath;
    std::string folder;
    std::string bytes;  // the project file's
    ProjectFile project;
    std::string name;
    std::string exeName;
    std::string outFolder;
    std::string target;
  };

  std::string Run(Job& job, const std::string& outFolder);
  void Load(Job& job, const std::string& outFolder) const;
  std::string CheckResourceFile(const Job& job) const;
  PublicInterface ReadSources(const Job& job, std::string& problem) const;
  std::optional<PublicClass> ReadComponent(const Job& job, const Component& component,
                                           std::string& problem) const;
  std::string Identify(const Job& job, PublicInterface& library) const;
  std::optional<EarlierLibrary> ReadEarlier(const std::string& path, std::string& problem) const;
  EarlierLibrary ReadForeignLibrary(const std::string& path) const;
  void WriteBinary(const Job& job, const PublicInterface& library) const;
  // An image that does nothing, or a copy of the stub that was asked for.
  std::string ComponentImage(const PeImage& image) const;
  void WriteAnew(const std::string& path, const std::string& bytes) const;
  void CountRevision(const Job& job) const;

  platform::FileSystem& m_files;
  platform::TypeLibReader& m_libraries;
  const Controls& m_controls;
};

}  // namespace hearthmake::vb6
