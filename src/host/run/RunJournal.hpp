#pragma once

#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

#include "build/BuildEvents.hpp"
#include "host/system/LockedFile.hpp"

namespace hearthmake::host {

// What a run was asked for and what it has compiled so far, in a file, so that another process can go on
// where it stopped: a line of JSON for the run, one for the projects that it was asked for where these are
// not all, and one for each project that compiled, each written as soon as it is known. The journal of a
// completed run is gone.
//
// A journal belongs to one process at a time, which makes it the lock of its build too.
class RunJournal final : public BuildEvents {
 public:
  // Reads the journal of the last run, if there is one and it was of these projects (by id).
  // HostError when another process runs the build, or the file can't be written.
  RunJournal(std::string path, std::int32_t idBuild, std::vector<std::int32_t> projects);

  // What a journal of this build is called in the data folder.
  static std::string FileName(std::int32_t idBuild);

  // Whether there is a run to go on with.
  bool IsOfThisBuild() const { return m_isOfThisBuild; }
  // There was a journal, but of other projects.
  bool IsOutdated() const { return m_isOutdated; }
  bool HasCompiled(std::int32_t idProject) const { return m_compiled.contains(idProject); }
  bool WasAskedFor(std::int32_t idProject) const { return !m_asked || m_asked->contains(idProject); }

  // Discards what was read.
  void StartFresh();
  // Goes on behind what was read.
  void Continue();
  // From now on these are what the run is asked for, beside what it has compiled.
  void AskFor(const std::vector<std::int32_t>& projects);
  void Remove();

  void ProjectCompiled(Project& objProject) override;

 private:
  void OpenLocked();
  void Read();
  bool ReadLine(std::string_view line, bool isFirst);
  bool ReadAsked(const nlohmann::json& asked);
  std::string Header() const;

  std::string m_path;
  std::int32_t m_idBuild;
  std::vector<std::int32_t> m_projects;  // ascending
  LockedFile m_file;
  std::unordered_set<std::int32_t> m_compiled;
  std::optional<std::unordered_set<std::int32_t>> m_asked;  // nothing: all
  std::int64_t m_wholeLines = 0;  // bytes up to the last line end: a kill may have cut a line off
  bool m_isOfThisBuild = false;
  bool m_isOutdated = false;
};

}  // namespace hearthmake::host
