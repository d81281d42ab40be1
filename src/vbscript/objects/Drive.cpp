#include "vbscript/objects/Drive.hpp"

#include "automation/Declare.hpp"
#include "vbscript/Errors.hpp"
#include "vbscript/objects/Folder.hpp"

namespace hearthmake::vbscript {

namespace {

constexpr std::int32_t kDiskNotReady = 71;

}  // namespace

const automation::Interface& Drive::Declaration() const {
  static const automation::Interface kDeclaration = automation::Declare("Drive", "IDrive", "", "")
                                                        .byDefault()
                                                        .get<&Drive::Path>("Path")
                                                        .get<&Drive::DriveLetter>("DriveLetter")
                                                        .get<&Drive::ShareName>("ShareName")
                                                        .get<&Drive::DriveType>("DriveType")
                                                        .get<&Drive::RootFolder>("RootFolder")
                                                        .get<&Drive::AvailableSpace>("AvailableSpace")
                                                        .get<&Drive::FreeSpace>("FreeSpace")
                                                        .get<&Drive::TotalSize>("TotalSize")
                                                        .get<&Drive::VolumeName>("VolumeName")
                                                        .let<&Drive::SetVolumeName>("VolumeName", {"Name"})
                                                        .get<&Drive::FileSystem>("FileSystem")
                                                        .get<&Drive::SerialNumber>("SerialNumber")
                                                        .get<&Drive::IsReady>("IsReady")
                                                        .build();
  return kDeclaration;
}

std::int32_t Drive::DriveType() { return static_cast<std::int32_t>(Volume().kind); }

automation::Ref<Folder> Drive::RootFolder() { return automation::Make<Folder>(m_context, Path() + "\\"); }

double Drive::AvailableSpace() { return static_cast<double>(ReadyVolume().availableBytes); }

double Drive::FreeSpace() { return static_cast<double>(ReadyVolume().freeBytes); }

double Drive::TotalSize() { return static_cast<double>(ReadyVolume().totalBytes); }

std::string Drive::VolumeName() {
  ReadyVolume();
  return "";
}

void Drive::SetVolumeName(const std::string& /*name*/) { RaiseRuntime(number::kPermissionDenied); }

std::string Drive::FileSystem() { return ReadyVolume().fileSystem; }

std::int32_t Drive::SerialNumber() { return static_cast<std::int32_t>(ReadyVolume().serialNumber); }

bool Drive::IsReady() { return Volume().isReady; }

platform::VolumeDetails Drive::Volume() { return m_context.host.Platform().files->Volume(m_letter); }

platform::VolumeDetails Drive::ReadyVolume() {
  platform::VolumeDetails volume = Volume();
  if (!volume.isReady) RaiseRuntime(kDiskNotReady);
  return volume;
}

automation::Ref<Drive> OpenDrive(Context& context, char letter) {
  const std::string letters = context.host.Platform().files->DriveLetters();
  if (letters.find(letter) == std::string::npos) RaiseRuntime(number::kDeviceUnavailable);
  return automation::Make<Drive>(context, letter);
}

}  // namespace hearthmake::vbscript
