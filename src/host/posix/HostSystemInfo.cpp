#include "host/posix/HostSystemInfo.hpp"

#include "automation/Error.hpp"
#include "automation/Text.hpp"
#include "host/HostError.hpp"
#include "host/Interrupt.hpp"

namespace hearthmake::host {

namespace {

constexpr std::int32_t kDefaultVersion = 10;
constexpr const char* kSystemFolder = "C:\\windows\\system32";
constexpr const char* kVersionKey = "Software\\Microsoft\\Windows NT\\CurrentVersion";

// Little-endian, as the registry stores it.
std::int32_t DWordOf(const std::string& data) {
  std::uint32_t value = 0;
  for (std::size_t i = 4; i > 0; --i) value = value << 8 | static_cast<unsigned char>(data[i - 1]);
  return static_cast<std::int32_t>(value);
}

}  // namespace

HostSystemInfo::HostSystemInfo(const HostSettings& settings, std::shared_ptr<const posix::DriveMap> drives,
                               std::shared_ptr<platform::Registry> registry, bool hasPrefix)
    : PosixSystemInfo({"", kSystemFolder, drives->FromPosix(settings.DataFolder()), kDefaultVersion}),
      m_settings(settings),
      m_drives(std::move(drives)),
      m_registry(std::move(registry)),
      m_hasPrefix(hasPrefix) {}

std::string HostSystemInfo::TemporaryFolder() {
  if (!m_temporary) {
    m_temporary.emplace(m_settings.TemporaryFolder());
    Interrupt::RemoveAtEnd(m_temporary->Path());
  }
  return m_drives->FromPosix(m_temporary->Path()) + "\\";
}

std::int32_t HostSystemInfo::MajorVersion() {
  if (!m_majorVersion) m_majorVersion = OverriddenVersion();
  if (!m_majorVersion) m_majorVersion = m_hasPrefix ? VersionOfPrefix() : kDefaultVersion;
  return *m_majorVersion;
}

std::optional<std::string> HostSystemInfo::EnvironmentVariable(std::string_view name) {
  if (auto value = PosixSystemInfo::EnvironmentVariable(name)) return value;
  const auto is = [name](const char* known) { return automation::EqualsIgnoreCaseAscii(name, known); };
  if (is("TEMP") || is("TMP")) return FolderOf("TMPDIR", "/tmp");
  if (is("USERPROFILE")) return FolderOf("HOME", "/");
  if (is("USERNAME")) return UserName();
  if (is("COMPUTERNAME")) return ComputerName();
  if (is("SystemDrive")) return "C:";
  if (is("SystemRoot") || is("windir")) return "C:\\windows";
  if (is("OS")) return "Windows_NT";
  return std::nullopt;
}

std::string HostSystemInfo::FolderOf(const char* variable, const char* otherwise) {
  const std::string folder = PosixSystemInfo::EnvironmentVariable(variable).value_or("");
  return m_drives->FromPosix(folder.starts_with('/') ? folder : otherwise);
}

// The library is waiting for the answer: it knows errors of its own kind only.
std::optional<std::int32_t> HostSystemInfo::OverriddenVersion() const {
  try {
    return m_settings.OsVersion();
  } catch (const HostError& error) {
    automation::Raise(automation::kInvalidValue, "SystemInfo", error.what());
  }
}

std::int32_t HostSystemInfo::VersionOfPrefix() {
  using platform::RegistryRoot;
  using platform::RegistryType;
  const auto number = m_registry->Query(RegistryRoot::LocalMachine, kVersionKey, "CurrentMajorVersionNumber");
  if (number && number->type == RegistryType::DWord && number->data.size() == 4) return DWordOf(number->data);
  const auto text = m_registry->Query(RegistryRoot::LocalMachine, kVersionKey, "CurrentVersion");
  const double version = text && text->type == RegistryType::String ? automation::Val(text->data) : 0;
  return version >= 1 && version < 1000 ? static_cast<std::int32_t>(version) : kDefaultVersion;
}

}  // namespace hearthmake::host
