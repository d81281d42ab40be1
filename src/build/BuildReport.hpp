#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace hearthmake {

class Build;
class ReportItem;

// The kinds of entries that callers tell apart.
inline constexpr std::int32_t kHeaderEntry = 1;
inline constexpr std::int32_t kClosingEntry = 2;

// The plain-text log of a build's runs: BUILD_<name>.log in the folder of the setting BuildReport, opened
// for append for each entry, so that builds of the same name share it. Errors of the file system reach
// the caller.
class BuildReport {
 public:
  // Stores the build and writes the start entry, whether or not the setting CreateReport is on.
  void SetParent(Build& build);
  // Adds an entry, when the setting CreateReport is on: the item's name, the time and its details, or
  // without item strInfo as it stands. ActionType (kHeaderEntry, kClosingEntry) changes nothing.
  void ReportAction(const ReportItem* oReportItem, std::int32_t ActionType, const std::string& strInfo);
  void Kill() { m_build = nullptr; }

 private:
  void Write(std::string_view text) const;

  Build* m_build = nullptr;
};

}  // namespace hearthmake
