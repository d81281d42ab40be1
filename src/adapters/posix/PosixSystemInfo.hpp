#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

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

 private:
  SystemFacts m_facts;
};

}  // namespace hearthmake::posix
