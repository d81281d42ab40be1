#include "embedding/EmbeddedSystemInfo.hpp"

#include "automation/Text.hpp"

namespace hearthmake::embedding {

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

EmbeddedSystemInfo::EmbeddedSystemInfo(const Options& options, std::shared_ptr<const posix::DriveMap> drives,
                                       std::shared_ptr<platform::Registry> registry)
    : PosixSystemInfo({"", kSystemFolder, drives->FromPosix(options.dataFolder), kDefaultVersion}),
      m_options(options),
      m_drives(std::move(drives)),
      m_registry(std::move(registry)) {}

std::string EmbeddedSystemInfo::TemporaryFolder() {
  if (!m_temporary) {
    m_temporary.emplace(m_options.temporaryFolder ? m_options.temporaryFolder() : "");
    if (m_options.onTemporaryFolder) m_options.onTemporaryFolder(m_temporary->Path());
    m_temporaryFolder = m_drives->FromPosix(m_temporary->Path()) + "\\";
  }
  return m_temporaryFolder;
}

std::int32_t EmbeddedSystemInfo::MajorVersion() {
  if (!m_majorVersion && m_options.windowsVersion) m_majorVersion = m_options.windowsVersion();
  if (!m_majorVersion) m_majorVersion = m_options.winePrefix.empty() ? kDefaultVersion : VersionOfPrefix();
  return *m_majorVersion;
}

std::optional<std::string> EmbeddedSystemInfo::EnvironmentVariable(std::string_view name) {
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

std::string EmbeddedSystemInfo::FolderOf(const char* variable, const char* otherwise) {
  const std::string folder = PosixSystemInfo::EnvironmentVariable(variable).value_or("");
  return m_drives->FromPosix(folder.starts_with('/') ? folder : otherwise);
}

std::int32_t EmbeddedSystemInfo::VersionOfPrefix() {
  using platform::RegistryRoot;
  using platform::RegistryType;
  const auto number = m_registry->Query(RegistryRoot::LocalMachine, kVersionKey, "CurrentMajorVersionNumber");
  if (number && number->type == RegistryType::DWord && number->data.size() == 4) return DWordOf(number->data);
  const auto text = m_registry->Query(RegistryRoot::LocalMachine, kVersionKey, "CurrentVersion");
  const double version = text && text->type == RegistryType::String ? automation::Val(text->data) : 0;
  return version >= 1 && version < 1000 ? static_cast<std::int32_t>(version) : kDefaultVersion;
}

}  // namespace hearthmake::embedding
