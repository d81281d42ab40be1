#pragma once

#include <memory>
#include <vector>

#include "automation/Object.hpp"
#include "platform/Platform.hpp"

namespace hearthmake {

class Settings;
class SettingNames;

// The module state of one thread: the platform, the one open database, the cached settings and the
// shared list of setting names. The composition root makes one on every thread that uses the library
// and keeps it longer than any object made there.
//
// A script engine keeps the build that its scripts see, and the build keeps the engine: hosts part them with
// Build.Kill. What a host forgot is parted when the apartment goes.
class Apartment {
 public:
  explicit Apartment(platform::Platform platform);
  Apartment(const Apartment&) = delete;
  Apartment& operator=(const Apartment&) = delete;
  ~Apartment();

  // The apartment of this thread. Error 91 when there is none.
  static Apartment& Current();

  const platform::Platform& Ports() const { return m_platform; }

  // The slots of modDatabase, mSettings and mTypes; empty until first use.
  std::shared_ptr<platform::Database>& DatabaseSlot() { return m_database; }
  automation::Ref<Settings>& SettingsSlot() { return m_settings; }
  automation::Ref<SettingNames>& SettingNamesSlot() { return m_settingNames; }
  // An engine whose named objects are to be given up with the apartment at the latest.
  void EndWithMe(const std::shared_ptr<platform::ScriptEngine>& engine);

 private:
  void EndEngines() noexcept;

  platform::Platform m_platform;
  std::shared_ptr<platform::Database> m_database;
  automation::Ref<Settings> m_settings;
  automation::Ref<SettingNames> m_settingNames;
  std::vector<std::weak_ptr<platform::ScriptEngine>> m_engines;
  Apartment* m_outer;  // the apartment that this one stands in for, restored when it goes
};

// Shorthand for the ports of this thread.
inline const platform::Platform& Ports() { return Apartment::Current().Ports(); }

}  // namespace hearthmake
