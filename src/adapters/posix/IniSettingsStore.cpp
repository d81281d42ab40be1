#include "adapters/posix/IniSettingsStore.hpp"

#include <pwd.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <utility>

namespace hearthmake::posix {

namespace {

// Far more than settings need, little enough to be read without a thought.
constexpr std::int64_t kLargestFile = 16 << 20;

std::string Home() {
  if (const char* home = std::getenv("HOME"); home != nullptr && *home != '\0') return home;
  const passwd* user = ::getpwuid(::getuid());
  return user != nullptr && user->pw_dir != nullptr ? user->pw_dir : "/";
}

}  // namespace

IniSettingsStore::IniSettingsStore(std::string path) : m_file(std::move(path), kLargestFile) {}

std::string IniSettingsStore::DefaultPath() {
  const char* folder = std::getenv("XDG_CONFIG_HOME");
  // A relative one is to be ignored.
  const bool isSet = folder != nullptr && *folder == '/';
  return (isSet ? std::string(folder) : Home() + "/.config") + "/hearthmake/settings.ini";
}

platform::SettingPairs IniSettingsStore::GetAll(std::string_view application, std::string_view section) {
  if (m_file.HasChanged()) m_text = Load();
  return m_text.GetAll(application, section);
}

void IniSettingsStore::Save(std::string_view application, std::string_view section,
                            const platform::SettingPairs& pairs) {
  Change([&](IniText& text) {
    bool changed = false;
    for (const auto& [key, value] : pairs) changed |= text.Set(application, section, key, value);
    return changed;
  });
}

void IniSettingsStore::Remove(std::string_view application, std::string_view section, std::string_view key) {
  Change([&](IniText& text) { return text.Remove(application, section, key); });
}

IniText IniSettingsStore::Load() {
  try {
    return IniText(m_file.Read(), m_file.Path());
  } catch (...) {
    m_file.Forget();  // the next call reads, and fails, again
    throw;
  }
}

void IniSettingsStore::Change(const std::function<bool(IniText&)>& change) {
  const FileDescriptor lock = m_file.Lock();
  // Read whatever the stamp says: two changes within one tick of the clock may look alike.
  IniText text = Load();
  if (change(text)) m_file.Replace(text.Print());
  m_text = std::move(text);
}

}  // namespace hearthmake::posix
