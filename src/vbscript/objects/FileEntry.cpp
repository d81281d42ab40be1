#include "vbscript/objects/FileEntry.hpp"

#include <limits>

#include "vbscript/Errors.hpp"
#include "vbscript/objects/DosPath.hpp"
#include "vbscript/objects/Drive.hpp"
#include "vbscript/objects/FileErrors.hpp"
#include "vbscript/objects/Folder.hpp"

namespace hearthmake::vbscript {

std::string FileEntry::Name() const { return dospath::FileName(m_path); }

void FileEntry::SetName(const std::string& name) {
  const bool isName = !name.empty() && name.find_first_of("\\/:*?\"<>|") == std::string::npos;
  if (!isName || dospath::IsRoot(m_path)) RaiseRuntime(number::kInvalidProcedureCall);
  const std::string target = dospath::Join(dospath::ParentFolderName(m_path), name);
  WithScriptErrors([&] { Files().Rename(m_path, target); });
  m_path = target;
}

automation::Ref<Drive> FileEntry::Drive() {
  const std::string drive = dospath::DriveName(m_path);
  if (drive.size() != 2) RaiseRuntime(number::kDeviceUnavailable);
  const char letter = drive[0] >= 'a' ? static_cast<char>(drive[0] - 'a' + 'A') : drive[0];
  return OpenDrive(m_context, letter);
}

automation::Ref<Folder> FileEntry::ParentFolder() {
  const std::string parent = dospath::ParentFolderName(m_path);
  if (parent.empty()) return nullptr;
  return automation::Make<Folder>(m_context, parent);
}

std::int32_t FileEntry::Attributes() { return static_cast<std::int32_t>(Details().attributes); }

void FileEntry::SetAttributes(std::int32_t attributes) {
  constexpr std::uint32_t kSettable =
      platform::kReadOnly | platform::kHidden | platform::kSystem | platform::kArchive;
  WithScriptErrors(
      [&] { Files().SetAttributes(m_path, static_cast<std::uint32_t>(attributes) & kSettable); });
}

automation::Date FileEntry::DateCreated() { return {Details().created}; }

automation::Date FileEntry::DateLastModified() { return {Details().modified}; }

automation::Date FileEntry::DateLastAccessed() { return {Details().accessed}; }

platform::FileDetails FileEntry::Details() const {
  return WithScriptErrors([&] { return Files().Details(m_path); });
}

automation::Variant ByteCount(std::uint64_t bytes) {
  constexpr auto kLongest = static_cast<std::uint64_t>(std::numeric_limits<std::int32_t>::max());
  if (bytes > kLongest) return automation::Variant::FromDouble(static_cast<double>(bytes));
  return automation::Variant::FromLong(static_cast<std::int32_t>(bytes));
}

}  // namespace hearthmake::vbscript
