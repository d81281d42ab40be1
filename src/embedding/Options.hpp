#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace hearthmake::embedding {

// What became of a file that was asked of source control.
enum class SourceFileState {
  Got,
  Unchanged,
  Skipped,  // somebody's work that the flags protect: writable, and not what source control has
};

struct SourceFile {
  std::string spec;  // "$/Suite/Lib/a.cls"
  SourceFileState state = SourceFileState::Got;
  std::size_t number = 0;  // from 1, among those of its source project
  std::size_t count = 0;
};

// What a host decides about the machine that the library sees. The data folder is needed, all else may be
// left as it is. Paths are the system's own.
struct Options {
  // Holds the database (Build.mdb), the registry, the catalog and drive C: (drive_c).
  std::string dataFolder;
  // The library's settings; empty: settings.ini in the data folder. The command's are
  // ~/.config/hearthmake/settings.ini.
  std::string settingsFile;
  // A Wine prefix whose drives and registry are used instead of the data folder's.
  std::string winePrefix;
  // Runs Windows programs.
  std::string wineProgram = "wine";
  // Drives beside C: and Z: (which is /): a letter and its folder.
  std::vector<std::pair<char, std::string>> drives;

  // Asked when first needed. The folder for temporary files, without blanks; empty or not set: $TMPDIR, /tmp.
  std::function<std::string()> temporaryFolder;
  // The major version of Windows; nothing or not set: that of the prefix, else 10.
  std::function<std::optional<std::int32_t>()> windowsVersion;

  // Called several times a second while the library waits for a child.
  std::function<void()> onWait;
  // Called for each file that comes from source control.
  std::function<void(const SourceFile& file)> onSourceFile;
  // Called with the folder for temporary files when it is made; it goes with the ports.
  std::function<void(const std::string& folder)> onTemporaryFolder;
  // MsgBox of a build's scripts: the number of the button that was chosen. Not set: the first button.
  std::function<std::int32_t(std::string_view prompt, std::int32_t style, std::string_view title)> onMessage;
  // Asked while scripts run and between the files of source control: true ends them.
  bool (*isStopWanted)() = nullptr;
};

}  // namespace hearthmake::embedding
