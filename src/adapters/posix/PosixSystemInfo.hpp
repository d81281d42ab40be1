#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/SystemInfo.hpp"

namespace hearthmake::posix {

// What the host decides about the machine that the library sees. Folders are DOS paths, with or
// without a final backslash.
struct SystemFacts {
  std::string temporaryFolder;
  std::string systemFolder;
  std::string componentFolder;
  std::int32_t majorVersion = 5;
};

class PosixSystemInfo : public platform::SystemInfo {
 public:
  explicit PosixSystemInfo(SystemFacts facts);

  std::string TemporaryFolder() override;
  std::string SystemFolder() override;
  std::string ComponentFolder() override;
  std::int32_t MajorVersion() override;
  // Names without regard to case, as on Windows; the exact spelling first.
  std::optional<std::string> EnvironmentVariable(std::string_view name) override;
  std::vector<std::string> Environment() override;
  // The variable whose name differs in case only, where there is one.
  void SetEnvironmentVariable(std::string_view name, const std::optional<std::string>& value) override;
  // Without its domain.
  std::string ComputerName() override;
  std::string UserName() override;

 private:
  SystemFacts m_facts;
};

}  // namespace hearthmake::posix
