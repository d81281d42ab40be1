#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "adapters/git/DatabaseSettings.hpp"
#include "adapters/git/RefStore.hpp"
#include "adapters/git/Repository.hpp"

namespace hearthmake::git {

// What a get has done with a file.
enum class FileOutcome {
  Got,        // it is new, or has new content
  Unchanged,  // it has this content already
  Skipped,    // it is writable and different: somebody's work, which the flags protect
};

struct FileProgress {
  std::string item;  // "$/Suite/Lib/a.cls"
  FileOutcome outcome = FileOutcome::Got;
  std::size_t number = 0;  // from 1
  std::size_t count = 0;   // of the files of this get
};

// What the host wants of long operations. Any of them may be empty.
struct Options {
  std::function<void(const FileProgress&)> onFile;
  // Asked between files; true ends the get with error 18.
  std::function<bool()> isStopWanted;
};

// What the items of one open database share.
class Session {
 public:
  // Reads the ini file, opens the repository and, with a remote, fetches. Errors name the ini file.
  Session(std::string_view iniPath, std::string_view user, std::string_view password, const PathMap& toPosix,
          const Options& options);

  const DatabaseSettings& Settings() const { return m_settings; }
  const Repository& Repo() const { return m_repository; }
  RefStore& Refs() const { return *m_refs; }
  const Person& User() const { return m_user; }
  const Options& HostOptions() const { return m_options; }
  const std::string& BranchRef() const { return m_branchRef; }
  // Whether the branch is that of the repository itself, so that its work tree can follow.
  bool HasRemote() const { return m_hasRemote; }

  // The branch as it is now. Error 76 when there is none.
  git_oid Tip() const;
  // The user at this moment.
  Handle<git_signature> Signature() const;
  // The POSIX path of a DOS path. Error 76 when it can't lead anywhere.
  std::string ToPosix(std::string_view dosPath) const;

 private:
  std::string FindBranch() const;
  std::unique_ptr<RefStore> MakeRefs(std::string_view password);

  PathMap m_toPosix;
  Options m_options;
  DatabaseSettings m_settings;
  Person m_user;
  Repository m_repository;
  std::string m_branchRef;
  bool m_hasRemote = false;
  std::unique_ptr<RefStore> m_refs;
};

}  // namespace hearthmake::git
