#pragma once

#include <string>
#include <vector>

namespace hearthmake::git {

// One writer at a time among the processes that use this adapter on a repository. The system lets go of the
// lock when a process dies.
//
// git's own locks are files ("refs/heads/main.lock") that a killed process leaves behind, and then nobody can
// write. So a writer notes here which of them it is going to take; the next one clears away what a dead
// predecessor noted and left.
class WriteLock {
 public:
  // The refs that nobody but this adapter writes. Noted, it stands for all lock files below.
  static constexpr const char* kOwnRefs = "refs/hearthmake/";

  // Waits for its turn. Error 70 or 75 when the repository can't be written to. Locks are paths of lock files
  // in the repository's folder, or kOwnRefs.
  WriteLock(const std::string& repositoryFolder, const std::vector<std::string>& locks);
  WriteLock(const WriteLock&) = delete;
  WriteLock& operator=(const WriteLock&) = delete;
  ~WriteLock();

 private:
  void ClearStale() const;
  void Note(const std::vector<std::string>& locks) const;

  std::string m_folder;
  int m_file = -1;
};

// The adapter's own folder in a repository, made when it is missing, with the permissions that the
// repository's refs have. Error 70 or 75 when it can't be.
std::string OwnFolder(const std::string& repositoryFolder, const std::string& name = {});

}  // namespace hearthmake::git
