#pragma once

#include <cstdint>
#include <string>

#include "automation/Object.hpp"

namespace hearthmake {

class Build;

// The source-control projects of a build. None can be kept yet: the collection is empty.
class SSProjects final : public automation::Object {
 public:
  static const automation::Interface& Describe();
  const automation::Interface& Declaration() const override { return Describe(); }

  explicit SSProjects(hearthmake::Build& build);

  // Error 9 for every position and 5 for every key: there are no members.
  automation::Variant Item(const automation::Variant& vIndex) const;
  std::int32_t Count() const { return 0; }
  automation::Ref<automation::Enumerator> NewEnum();
  automation::Ref<automation::Enumerator> Enumerate() override { return NewEnum(); }
  hearthmake::Build* Parent() const { return m_build; }

  // Checks a file in, through the source project that it belongs to. False, with the reason in strResult,
  // when that can't be done.
  bool CheckInFile(const std::string& strFile, const std::string& strComment, bool bKeepCheckedOut,
                   std::string& strResult) const;
  // Who checked the file in last, when and why. Error 45 without source projects.
  std::string GetLastModifiedData(const std::string& file) const;

  void ReleaseMembers() { m_build = nullptr; }

 private:
  hearthmake::Build* m_build;  // null once released
};

}  // namespace hearthmake
