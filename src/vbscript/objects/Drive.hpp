#pragma once

#include <string>

#include "automation/Object.hpp"
#include "vbscript/intrinsics/Context.hpp"

namespace hearthmake::vbscript {

class Folder;

// A drive as scripts see it. Sizes are bytes as Double. Error 71 "Disk not ready" where its folder is gone.
class Drive final : public automation::Object {
 public:
  Drive(Context& context, char letter) : m_context(context), m_letter(letter) {}
  const automation::Interface& Declaration() const override;

  std::string Path() const { return std::string(1, m_letter) + ":"; }
  std::string DriveLetter() const { return std::string(1, m_letter); }
  std::string ShareName() const { return ""; }
  std::int32_t DriveType();
  automation::Ref<Folder> RootFolder();
  double AvailableSpace();
  double FreeSpace();
  double TotalSize();
  std::string VolumeName();
  // Error 70: labels are not ours to change.
  void SetVolumeName(const std::string& name);
  std::string FileSystem();
  std::int32_t SerialNumber();
  bool IsReady();

 private:
  platform::VolumeDetails Volume();
  platform::VolumeDetails ReadyVolume();

  Context& m_context;
  char m_letter;
};

// By letter; error 68 "Device unavailable" when there is no such drive.
automation::Ref<Drive> OpenDrive(Context& context, char letter);

}  // namespace hearthmake::vbscript
