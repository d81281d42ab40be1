#pragma once

#include <cstdint>
#include <string>

#include "host/system/LockedFile.hpp"

namespace hearthmake::host {

// Keeps a build from running while something takes its place. Who runs a build has its journal to himself
// (RunJournal), so this has it meanwhile.
class RunLock {
 public:
  // The folder is that of the data. HostError with the build's name when another process is running it, or
  // when the journal can't be opened.
  RunLock(const std::string& folder, std::int32_t idBuild, const std::string& buildName);
  RunLock(const RunLock&) = delete;
  RunLock& operator=(const RunLock&) = delete;
  // The journal of a stopped run stays, to be gone on with; one that was made for the lock goes.
  ~RunLock();

  // The stopped run was of projects that are gone.
  void RemoveJournal();

 private:
  LockedFile m_journal;
  bool m_isNamed = true;  // else the name may be that of the next run's journal
};

}  // namespace hearthmake::host
