#pragma once

#include <memory>
#include <optional>
#include <string>

#include "adapters/posix/DriveMap.hpp"
#include "adapters/posix/PosixSystemInfo.hpp"
#include "adapters/posix/TemporaryDirectory.hpp"
#include "embedding/Options.hpp"
#include "platform/Registry.hpp"

namespace hearthmake::embedding {

// The facts about the machine, found out when they are asked for: most commands need none of them.
class EmbeddedSystemInfo final : public posix::PosixSystemInfo {
 public:
  EmbeddedSystemInfo(const Options& options, std::shared_ptr<const posix::DriveMap> drives,
                     std::shared_ptr<platform::Registry> registry);

  // Private to the process, made at the first call and gone at its end.
  std::string TemporaryFolder() override;
  // What the host says, else what the prefix's registry says, else 10.
  std::int32_t MajorVersion() override;
  // Names that every Windows program finds set (TEMP, USERPROFILE, SystemRoot ...) have a value here even
  // where the process has none.
  std::optional<std::string> EnvironmentVariable(std::string_view name) override;

 private:
  std::int32_t VersionOfPrefix();
  std::string FolderOf(const char* variable, const char* otherwise);

  Options m_options;
  std::shared_ptr<const posix::DriveMap> m_drives;
  std::shared_ptr<platform::Registry> m_registry;
  std::optional<posix::TemporaryDirectory> m_temporary;
  std::string m_temporaryFolder;  // its DOS path
  std::optional<std::int32_t> m_majorVersion;
};

}  // namespace hearthmake::embedding
