#include "host/posix/HostDrives.hpp"

#include <fmt/format.h>

#include "automation/Error.hpp"
#include "host/HostError.hpp"
#include "host/system/Places.hpp"

namespace hearthmake::host {

namespace {

void AddDrive(posix::DriveMap& drives, const std::string& text) {
  const std::size_t equals = text.find('=');
  const bool isDrive = equals != std::string::npos && HostSettings::IsDriveKey(text.substr(0, equals));
  if (!isDrive || equals + 1 == text.size()) {
    throw HostError(fmt::format("'{}' is no drive.", text),
                    "A drive is a letter and its folder: --drive D:=/srv/d");
  }
  drives.SetDrive(text[0], AbsoluteSystemPath(text.substr(equals + 1)));
}

}  // namespace

posix::DriveMap DrivesOf(const HostSettings& settings) {
  const std::string prefix = settings.WinePrefix();
  posix::DriveMap drives;
  try {
    drives = prefix.empty() ? posix::DriveMap::BuiltIn(settings.DataFolder())
                            : posix::DriveMap::FromWinePrefix(prefix);
  } catch (const automation::Error& error) {
    throw HostError(fmt::format("{} is no Wine prefix: {}.", prefix, error.Description()),
                    fmt::format("Make one with: WINEPREFIX='{}' wineboot", prefix));
  }
  for (const auto& [key, folder] : settings.Stored()) {
    if (HostSettings::IsDriveKey(key)) AddDrive(drives, fmt::format("{}={}", key, folder));
  }
  for (const std::string& drive : settings.AddedDrives()) AddDrive(drives, drive);
  return drives;
}

}  // namespace hearthmake::host
