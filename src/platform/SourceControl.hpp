#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace hearthmake::platform {

// What a person asks of a get, a check-out or a check-in: bits of one Long, in groups of which each holds one
// choice. A group that is 0 leaves the choice to the adapter.
namespace SourceFlags {
inline constexpr std::int32_t kReadOnlyYes = 0x1;  // files that were got can't be written
inline constexpr std::int32_t kReadOnlyNo = 0x2;
inline constexpr std::int32_t kReadOnlyMask = 0x3;
inline constexpr std::int32_t kTimeNow = 0x4;       // the file's time is that of the get
inline constexpr std::int32_t kTimeModified = 0x8;  // that of the last change
inline constexpr std::int32_t kTimeUpdated = 0xC;   // that of the check-in
inline constexpr std::int32_t kTimeMask = 0xC;
inline constexpr std::int32_t kReplaceAsk = 0x40;  // what to do with a writable file that is in the way
inline constexpr std::int32_t kReplaceYes = 0x80;
inline constexpr std::int32_t kReplaceSkip = 0xC0;
inline constexpr std::int32_t kReplaceMerge = 0x100;
inline constexpr std::int32_t kReplaceMask = 0x1C0;
inline constexpr std::int32_t kRecursiveNo = 0x1000;
inline constexpr std::int32_t kRecursiveYes = 0x2000;
inline constexpr std::int32_t kRecursiveMask = 0x3000;
inline constexpr std::int32_t kKeepNo = 0x10000;   // a check-in ends the check-out
inline constexpr std::int32_t kKeepYes = 0x20000;  // a check-in keeps it
inline constexpr std::int32_t kKeepMask = 0x30000;
inline constexpr std::int32_t kGetYes = 0x4000000;  // a check-out also gets the file
inline constexpr std::int32_t kGetNo = 0x8000000;   // it leaves the local file as it is
inline constexpr std::int32_t kGetMask = 0xC000000;
}  // namespace SourceFlags

// Who has an item checked out.
enum class CheckoutState : std::int32_t {
  NotCheckedOut = 0,
  ByOther = 1,
  ByCurrentUser = 2,
};

class VSSVersion;

// Somebody's hold on a file.
struct VSSCheckout {
  std::string Spec;  // of the file
  std::string Username;
  double Date = 0;  // OLE date, local time
  std::string Comment;
};

// The history of an item, newest first; a label stands before the version that it was put on.
class VSSVersions {
 public:
  VSSVersions() = default;
  VSSVersions(const VSSVersions&) = delete;
  VSSVersions& operator=(const VSSVersions&) = delete;
  virtual ~VSSVersions() = default;

  // Null behind the oldest.
  virtual std::unique_ptr<VSSVersion> Next() = 0;
};

// A project (folder) or file, as it is now or as it was in a version. What fails throws automation::Error
// whose source is the operation, "VSSItem.Get", and whose text names the item.
class VSSItem {
 public:
  VSSItem() = default;
  VSSItem(const VSSItem&) = delete;
  VSSItem& operator=(const VSSItem&) = delete;
  virtual ~VSSItem() = default;

  // The path inside the database, "$/Suite/Lib".
  virtual std::string Spec() const = 0;
  // Copies the files to a local (DOS) path: into that folder for a project, to that file, or into that folder
  // if it is one, for a file. An empty path means the working folder that the database keeps for this user.
  virtual void Get(std::string_view strLocal, std::int32_t lngFlags) = 0;
  virtual std::unique_ptr<VSSVersions> Versions() = 0;
  virtual void Label(std::string_view strLabel, std::string_view strComment) = 0;
  virtual CheckoutState IsCheckedOut() = 0;
  // Those of a file; of a project, those of all files below it.
  virtual std::vector<VSSCheckout> Checkouts() = 0;
  virtual void Checkout(std::string_view strComment, std::string_view strLocal, std::int32_t lngFlags) = 0;
  virtual void Checkin(std::string_view strComment, std::string_view strLocal, std::int32_t lngFlags) = 0;
};

// One entry of a history: a version, or a label.
class VSSVersion {
 public:
  VSSVersion() = default;
  VSSVersion(const VSSVersion&) = delete;
  VSSVersion& operator=(const VSSVersion&) = delete;
  virtual ~VSSVersion() = default;

  virtual std::string Label() const = 0;  // empty for a version
  virtual std::string Username() const = 0;
  virtual double Date() const = 0;  // OLE date, local time
  virtual std::string Comment() const = 0;
  // The item as it was then.
  virtual std::unique_ptr<platform::VSSItem> VSSItem() const = 0;
};

// A session on a source-control database, for one user. Closed with the object.
class VSSDatabase {
 public:
  VSSDatabase() = default;
  VSSDatabase(const VSSDatabase&) = delete;
  VSSDatabase& operator=(const VSSDatabase&) = delete;
  virtual ~VSSDatabase() = default;

  // The item at a path such as "$/Suite/Lib"; either slash separates. Raises an error when there is none.
  virtual std::unique_ptr<platform::VSSItem> VSSItem(std::string_view strSpec, bool bDeleted) = 0;
};

// Where a build's sources come from.
class SourceControl {
 public:
  SourceControl() = default;
  SourceControl(const SourceControl&) = delete;
  SourceControl& operator=(const SourceControl&) = delete;
  virtual ~SourceControl() = default;

  // Opens a session on the database that the ini file (a DOS path) describes. Raises an error that names the
  // file when there is no such database or the user may not open it.
  virtual std::unique_ptr<VSSDatabase> Open(std::string_view strSrcSafeIni, std::string_view strUser,
                                            std::string_view strPassword) = 0;
};

}  // namespace hearthmake::platform
