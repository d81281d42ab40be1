#pragma once

#include <memory>
#include <optional>
#include <string>

#include "adapters/posix/DriveMap.hpp"
#include "adapters/posix/PosixSystemInfo.hpp"
#include "adapters/posix/TemporaryDirectory.hpp"
#include "host/HostSettings.hpp"
#include "platform/Registry.hpp"

namespace hearthmake::host {

// The facts about the machine, found out when they are asked for: most commands need none of them.
class HostSystemInfo final : public posix::PosixSystemInfo {
 public:
  HostSystemInfo(const HostSettings& settings, std::shared_ptr<const posix::DriveMap> drives,
                 std::shared_ptr<platform::Registry> registry, bool hasPrefix);

  // Private to the process, made at the first call and gone at its end.
  std::string TemporaryFolder() override;
  // The host's override (error 45 when that is no number), else what the prefix's registry says, else 10.
  std::int32_t MajorVersion() override;
  // Names that every Windows program finds set (TEMP, USERPROFILE, SystemRoot ...) have a value here even
  // where the process has none.
  std::optional<std::string> EnvironmentVariable(std::string_view name) override;

 private:
  std::optional<std::int32_t> OverriddenVersion() const;
  std::int32_t VersionOfPrefix();
  std::string FolderOf(const char* variable, const char* otherwise);

  const HostSettings& m_settings;
  std::shared_ptr<const posix::DriveMap> m_drives;
  std::shared_ptr<platform::Registry> m_registry;
  bool m_hasPrefix;
  std::optional<posix::TemporaryDirectory> m_temporary;
  std::optional<std::int32_t> m_majorVersion;
};

}  // namespace hearthmake::host
