#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "host/builds/ProjectGraph.hpp"
#include "host/run/RewrittenFiles.hpp"
#include "host/run/RunPlan.hpp"
#include "platform/FileSystem.hpp"

namespace hearthmake::host {

// Finds out which binaries are older than what they are made of, by time stamps alone. Every file is looked
// at once, however many projects name it.
class ChangeFinder {
 public:
  // What a person reads for a DOS path.
  using PathText = std::function<std::string(const std::string& dosPath)>;

  ChangeFinder(platform::FileSystem& files, const RewrittenFiles& rewritten, PathText pathText);

  // Takes out of the plan what is up to date, and tells of the others why they are not: the binary is missing
  // or older than the project file, a source or a referenced binary; a source is missing that a compile
  // needs; or the project depends on one that the plan compiles, however far away. inCompileOrder are the
  // projects of plan and graph.
  void LeaveOutUpToDate(RunPlan& plan, const ProjectList& inCompileOrder, const ProjectGraph& graph);

 private:
  struct File {
    std::string path;
    platform::FileStamp stamp;

    bool IsThere() const { return stamp.size >= 0; }
  };

  void NoteBinaries(const RunPlan& plan, const ProjectList& projects);
  std::optional<std::string> WhyChanged(Project& project, std::size_t position,
                                        const std::vector<std::size_t>& referenced);
  std::optional<std::string> WhyFileChanged(Project& project, const File& binary);
  bool IsMadeBehind(std::size_t position, const std::string& binary) const;
  std::optional<std::string> WhySourceChanged(const File& projectFile, const File& binary);
  std::string Compare(const File& file, const File& binary) const;
  File Look(std::string path);

  platform::FileSystem& m_files;
  const RewrittenFiles& m_rewritten;
  PathText m_pathText;
  std::unordered_map<std::string, platform::FileStamp> m_stamps;  // by path, as it was asked for
  std::vector<std::string> m_binaries;                            // by position
  std::unordered_map<std::string, std::size_t> m_lastMakers;      // by binary in lower case
};

// Whether a file has changed since a binary was made, by their times of modification (nanoseconds). Where the
// disk keeps whole seconds only, what happened within one can't be told apart and counts as the same time.
bool IsNewer(std::int64_t file, std::int64_t binary);

}  // namespace hearthmake::host
