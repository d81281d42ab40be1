#pragma once

#include <memory>

#include "platform/Clock.hpp"
#include "platform/ComPlusCatalog.hpp"
#include "platform/Database.hpp"
#include "platform/EventPump.hpp"
#include "platform/FileSystem.hpp"
#include "platform/MtsCatalog.hpp"
#include "platform/ProcessLauncher.hpp"
#include "platform/Registry.hpp"
#include "platform/ScriptEngine.hpp"
#include "platform/SettingsStore.hpp"
#include "platform/Shell.hpp"
#include "platform/SourceControl.hpp"
#include "platform/SystemInfo.hpp"
#include "platform/TypeLibReader.hpp"

namespace hearthmake::platform {

// Everything the core needs of the outside, filled in by the composition root. No member is null.
struct Platform {
  std::shared_ptr<Workspace> workspace;
  std::shared_ptr<FileSystem> files;
  std::shared_ptr<ProcessLauncher> processes;
  std::shared_ptr<Shell> shell;
  std::shared_ptr<SettingsStore> settings;
  std::shared_ptr<Registry> registry;
  std::shared_ptr<TypeLibReader> typeLibs;
  std::shared_ptr<ScriptEngines> scripts;
  std::shared_ptr<SourceControl> sources;
  std::shared_ptr<MtsCatalogs> mtsCatalogs;
  std::shared_ptr<ComPlusCatalogs> comPlusCatalogs;
  std::shared_ptr<EventPump> events;
  std::shared_ptr<Clock> clock;
  std::shared_ptr<SystemInfo> system;
};

}  // namespace hearthmake::platform
