#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "automation/Object.hpp"
#include "foundation/KeyedCollection.hpp"
#include "sourcecontrol/SSProject.hpp"

namespace hearthmake {

class Build;

// The source-control projects of a build, under their ids, in the order in which they were added.
class SSProjects final : public automation::Object {
 public:
  static const automation::Interface& Describe();
  const automation::Interface& Declaration() const override { return Describe(); }

  explicit SSProjects(hearthmake::Build& build);

  // By position from 1 (error 9) or by id as text (error 5).
  automation::Ref<SSProject> Item(const automation::Variant& vIndex) const;
  std::int32_t Count() const { return static_cast<std::int32_t>(m_items.Count()); }
  automation::Ref<automation::Enumerator> NewEnum();
  automation::Ref<automation::Enumerator> Enumerate() override { return NewEnum(); }
  // A new project of the build. It becomes a member when it is stored: BeginEdit, …, ApplyEdit.
  automation::Ref<SSProject> Create();
  // Runs the script BeforeSourceSafe, then gets the latest files of every project that has no Skip. A host
  // that cancels in GettingLatestVersion keeps the files of that project and of those behind it from being
  // got. True; errors of the source control reach the caller.
  bool GetLatestFromSoursafe();
  hearthmake::Build* Parent() const { return m_build; }
  // Sends a message to a machine of the network with the system's own command.
  void NetSendCheckedOutFiles(const std::string& strMachine, const std::string& strMessage);
  // Checks a file in through the project that it belongs to; it is checked out first, without being got,
  // unless the user has it checked out. The comment, when empty, is "Hearthmake Check in". False when that
  // can't be done: strResult tells why, and no error is raised.
  bool CheckInFile(const std::string& strFile, const std::string& strComment, bool bKeepCheckedOut,
                   std::string& strResult) const;

  // For the build and its members.
  // Reads the projects of the build.
  void Load();
  hearthmake::Build& ParentBuild() const;
  void Add(SSProject& project);
  void Remove(SSProject& project);
  // Where a local file is kept: the project whose working folder shares the longest leading part with the
  // file's path, and the file's path in that project's database. What is behind the shared part follows
  // Project as it is, without a separator. Nothing without a shared part. Letters count, not folders: a file
  // beside a nested working folder shares a backslash more with that one, unless the outer folder ends in
  // one, too.
  struct Place {
    automation::Ref<SSProject> project;
    std::string spec;
  };
  std::optional<Place> FindPlace(const std::string& file) const;
  // Who checked the file in last, when and why: user, blank, date and time, CR LF, comment; or why that
  // can't be told. Error 45 without projects: "You have no SourceSafe projects configured!".
  std::string GetLastModifiedData(const std::string& file) const;
  void ReleaseMembers();

 protected:
  ~SSProjects() override;

 private:
  hearthmake::Build* m_build;  // null once released
  KeyedCollection<SSProject> m_items{"SSProjects.item"};
};

}  // namespace hearthmake
