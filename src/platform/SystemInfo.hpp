#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace hearthmake::platform {

// Facts about the machine and the process. Folders are DOS paths.
class SystemInfo {
 public:
  SystemInfo() = default;
  SystemInfo(const SystemInfo&) = delete;
  SystemInfo& operator=(const SystemInfo&) = delete;
  virtual ~SystemInfo() = default;

  // The folder for temporary files, ending in a backslash.
  virtual std::string TemporaryFolder() = 0;
  // The system folder (`C:\windows\system32`), without a final backslash.
  virtual std::string SystemFolder() = 0;
  // The library's own folder, where Build.mdb lies, without a final backslash.
  virtual std::string ComponentFolder() = 0;
  // The operating system's major version: 4 for Windows NT 4, 5 for Windows 2000 …
  virtual std::int32_t MajorVersion() = 0;
  virtual std::optional<std::string> EnvironmentVariable(std::string_view name) = 0;
  // Every variable as `NAME=value`.
  virtual std::vector<std::string> Environment() = 0;
  // For this process and the children that it starts from now on; nothing removes the variable.
  virtual void SetEnvironmentVariable(std::string_view name, const std::optional<std::string>& value) = 0;
  virtual std::string ComputerName() = 0;
  virtual std::string UserName() = 0;
};

}  // namespace hearthmake::platform
