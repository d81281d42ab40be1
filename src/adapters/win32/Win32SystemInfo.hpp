#pragma once

#include <string>

#include "platform/SystemInfo.hpp"

namespace hearthmake::win32 {

class Win32SystemInfo : public platform::SystemInfo {
 public:
  // The folder where the library keeps its files (a DOS path); empty for that of the module that this code is
  // linked into, be it a DLL or a program.
  explicit Win32SystemInfo(std::string componentFolder = {});

  std::string TemporaryFolder() override;
  std::string SystemFolder() override;
  std::string ComponentFolder() override;
  // What the system is, not what it plays for old programs.
  std::int32_t MajorVersion() override;
  std::optional<std::string> EnvironmentVariable(std::string_view name) override;
  std::vector<std::string> Environment() override;
  void SetEnvironmentVariable(std::string_view name, const std::optional<std::string>& value) override;
  std::string ComputerName() override;
  std::string UserName() override;

 private:
  std::string m_componentFolder;
};

}  // namespace hearthmake::win32
