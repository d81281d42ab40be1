#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "build/BuildEvents.hpp"
#include "platform/FileSystem.hpp"

namespace hearthmake::host {

// The project files that a compiler wrote to when it had written the binary already, as one that counts up
// the revision does: they are newer than their binary, and yet it was made of them. Their stamps are kept in
// a small file for each build; there is none when no compiler does so. A file that can't be written or is
// damaged costs no more than a compile that was not needed.
class RewrittenFiles final : public BuildEvents {
 public:
  // Reads what the runs so far have left. path is a DOS path.
  RewrittenFiles(platform::FileSystem& files, std::string path);

  // What the file of a build is called in the data folder.
  static std::string FileName(std::int32_t idBuild);

  // Whether project file and binary are those that a compile of the project left.
  bool IsAsCompiled(std::int32_t idProject, const platform::FileStamp& projectFile,
                    const platform::FileStamp& binary) const;
  // Stores what came since it was read, if anything did.
  void Save();

  void ProjectCompiled(Project& objProject) override;

 private:
  struct Stamps {
    std::int64_t projectFile = 0;  // times of modification
    std::int64_t binary = 0;
    friend bool operator==(const Stamps&, const Stamps&) = default;
  };
  void Read();

  platform::FileSystem& m_files;
  std::string m_path;
  std::map<std::int32_t, Stamps> m_stamps;  // by project
  bool m_isDirty = false;
};

}  // namespace hearthmake::host
