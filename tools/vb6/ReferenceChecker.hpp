#pragma once

#include <string>
#include <string_view>

#include "platform/FileSystem.hpp"
#include "platform/TypeLibReader.hpp"
#include "vb6/ProjectFile.hpp"

namespace hearthmake::vb6 {

// Sees whether a project's references lead to what the rows say.
class ReferenceChecker {
 public:
  // Without assumeSystemLibraries a library of the system has to be on this machine like any other.
  ReferenceChecker(platform::FileSystem& files, platform::TypeLibReader& libraries,
                   bool assumeSystemLibraries)
      : m_files(files), m_libraries(libraries), m_assumeSystemLibraries(assumeSystemLibraries) {}

  // The first thing that is wrong with the references, or an empty text. Relative paths start at the
  // project's folder; a control without a folder is looked for there and in the output folder.
  std::string Check(const ProjectFile& project, const std::string& projectFolder,
                    const std::string& outputFolder);

 private:
  std::string CheckLibrary(const ReferenceRow& row, const std::string& path) const;
  std::string FindControl(const ReferenceRow& row, const std::string& projectFolder,
                          const std::string& outputFolder) const;
  bool Exists(const std::string& path) const;

  platform::FileSystem& m_files;
  platform::TypeLibReader& m_libraries;
  bool m_assumeSystemLibraries;
};

}  // namespace hearthmake::vb6
