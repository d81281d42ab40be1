#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace hearthmake::posix {

class FolderListings;

// DOS paths over POSIX folders, the way Wine maps them: each drive letter stands for a folder. Names
// are matched without regard to case, the exact spelling first; `..` is handled lexically and stops at
// the root of the drive. Both slashes separate names. Besides drives, `\\?\unix\home\me` (Wine's way
// of naming any POSIX path) is understood; other UNC paths are not.
//
// A map is cheap to copy; copies share what is remembered of folders. Looking paths up is safe from
// several threads, changing drives is not.
class DriveMap {
 public:
  // Where a parent process leaves the text of its map for native tools that it starts.
  static constexpr const char* kEnvironmentVariable = "HEARTHMAKE_DRIVES";

  // No drives at all.
  DriveMap();

  // `C:` is `drive_c` in the data folder, `Z:` is `/`.
  static DriveMap BuiltIn(std::string_view dataFolder);
  // The drives of a Wine prefix, read once from the links in its `dosdevices`; `Z:` is `/` where the
  // prefix has no such drive. Error 76 when the folder has no `dosdevices`.
  static DriveMap FromWinePrefix(std::string_view prefix);
  // Reads what Serialize wrote. Anything else is error 5, with the piece that is wrong.
  static DriveMap Parse(std::string_view text);
  // The map that the parent process left; nothing when there is none. Errors as Parse.
  static std::optional<DriveMap> FromEnvironment();

  // Gives a drive a folder, which need not exist yet; a relative one starts at the current folder.
  // A letter other than A to Z (any case) or an empty folder is error 5.
  void SetDrive(char letter, std::string_view posixFolder);
  // The POSIX folder of a drive, absolute; nothing when there is no such drive.
  std::optional<std::string> Drive(char letter) const;

  // The POSIX path of a DOS path, absolute. Names that exist come in the spelling they have on disk,
  // others keep theirs without the blanks and dots at their end. A relative path starts at the current
  // folder, `\x` at the root of the current folder's drive, `X:rel` at the root of X. Nothing when
  // the path can't lead anywhere: it is empty or holds a zero byte, it names a drive that is not
  // mapped, it is a UNC path.
  std::optional<std::string> ToPosix(std::string_view dosPath) const;
  // The same without a look at the disk: every name as it is spelled. For callers that try this path
  // first and ask ToPosix only when nothing is there.
  std::optional<std::string> ToPosixAsSpelled(std::string_view dosPath) const;

  // The DOS path of a POSIX path, by the drive with the longest matching folder (as it was given, or
  // with its links resolved); `\\?\unix\…` when no drive reaches it. A relative path starts at the
  // current folder. Names that are not UTF-8 are read as Windows-1252.
  std::string FromPosix(std::string_view posixPath) const;

  // The drives as one line of text: `C:=/home/me/drive_c;Z:=/`, with `%`, `;` and control characters
  // of a path as `%25`, `%3B` …
  std::string Serialize() const;

 private:
  struct Root {
    // Absolute and without a final slash, so that "" is `/`.
    std::string folder;
    std::string resolved;  // the same with its links resolved
  };
  // A path whose first `root` characters are the drive's folder.
  struct Spelling {
    std::string path;
    std::size_t root = 0;
  };
  // The drive that a POSIX path lies on, and how much of the path is the drive's folder.
  struct Match {
    int drive = -1;
    std::size_t length = 0;
  };

  const Root* Find(char letter) const;
  Match DriveOf(std::string_view posixPath) const;
  // Takes the drive off the front of the path and yields the folder where the rest starts.
  std::optional<Spelling> Start(std::string_view& dosPath) const;
  std::optional<Spelling> Spell(std::string_view dosPath) const;
  // The path with every name as it is on disk, for a spelling that leads nowhere.
  std::string Resolve(const Spelling& spelling) const;

  std::array<std::optional<Root>, 26> m_drives;
  std::shared_ptr<FolderListings> m_listings;
};

}  // namespace hearthmake::posix
