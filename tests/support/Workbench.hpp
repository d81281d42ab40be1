#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "adapters/posix/DriveMap.hpp"
#include "adapters/posix/IniSettingsStore.hpp"
#include "adapters/posix/PosixClock.hpp"
#include "adapters/posix/PosixFileSystem.hpp"
#include "adapters/posix/PosixProcessLauncher.hpp"
#include "adapters/posix/PosixShell.hpp"
#include "adapters/posix/PosixSystemInfo.hpp"
#include "adapters/posix/RegistryStore.hpp"
#include "adapters/sqlite/BuildSchema.hpp"
#include "adapters/sqlite/SqliteWorkspace.hpp"
#include "adapters/typelib/ComponentRegistration.hpp"
#include "adapters/typelib/TypeLibFileReader.hpp"
#include "adapters/vbs/VbsScriptEngines.hpp"
#include "foundation/Apartment.hpp"
#include "foundation/Settings.hpp"
#include "foundation/mTypes.hpp"
#include "support/MemorySourceControl.hpp"
#include "support/PosixFolder.hpp"

namespace hearthmake::support {

// Counts what is asked of it; sleeps by moving on its own time.
class TestClock final : public platform::Clock {
 public:
  double Now() override { return now; }
  void Sleep(std::chrono::milliseconds duration) override {
    slept += duration;
    now += static_cast<double>(duration.count()) / 86400000.0;
  }
  double now = 36975.545138888889;  // 2001-03-25 13:05:00
  std::chrono::milliseconds slept{0};
};

class CountingPump final : public platform::EventPump {
 public:
  void DeliverPending() override { ++delivered; }
  int delivered = 0;
};

// Runs command lines through the real launcher and remembers them.
class RecordingLauncher final : public platform::ProcessLauncher {
 public:
  explicit RecordingLauncher(const posix::DriveMap& drives) : m_real(drives) {}
  std::unique_ptr<platform::ChildProcess> Start(std::string_view commandLine) override {
    commands.emplace_back(commandLine);
    return m_real.Start(commandLine);
  }
  platform::PipedChild StartPiped(std::string_view commandLine) override {
    commands.emplace_back(commandLine);
    return m_real.StartPiped(commandLine);
  }
  std::vector<std::string> commands;

 private:
  posix::PosixProcessLauncher m_real;
};

// Remembers what is started, and starts it.
class RecordingShell final : public platform::Shell {
 public:
  explicit RecordingShell(std::shared_ptr<platform::Shell> real) : m_real(std::move(real)) {}
  void Start(std::string_view commandLine, platform::WindowState window) override {
    commands.emplace_back(commandLine);
    windows.push_back(window);
    m_real->Start(commandLine, window);
  }
  std::vector<std::string> commands;
  std::vector<platform::WindowState> windows;

 private:
  std::shared_ptr<platform::Shell> m_real;
};

// An apartment over the real embedded adapters (but for source control, whose databases are in memory) in a
// folder of its own: C: is <folder>/drive_c, the data
// folder (with Build.mdb) is C:\data, Z: is the machine. The compiler is C:\vb6.exe; tests give it as a
// shell script.
class Workbench {
 public:
  explicit Workbench(std::int32_t majorVersion = 10) {
    root.MakeFolder("drive_c/data");
    root.MakeFolder("drive_c/temp");
    root.MakeFolder("drive_c/src");
    root.MakeFolder("drive_c/windows/system32");
    drives = std::make_shared<posix::DriveMap>(posix::DriveMap::BuiltIn(root.Path()));
    sqlite::CreateBuildDatabase(root.Path("drive_c/data/Build.mdb"));
    files = std::make_shared<posix::PosixFileSystem>(drives);
    clock = std::make_shared<TestClock>();
    pump = std::make_shared<CountingPump>();
    launcher = std::make_shared<RecordingLauncher>(*drives);
    registry = std::make_shared<posix::RegistryStore>(root.Path("registry.reg"));
    sources = std::make_shared<MemorySourceControl>(files);
    apartment = std::make_unique<Apartment>(Ports(majorVersion));
  }

  // POSIX path of a DOS path on C:.
  std::string Posix(const std::string& dosPath) const { return drives->ToPosix(dosPath).value(); }
  // A file by DOS path ("C:\src\Lib.vbp"), with the folders above it; line feeds become CR LF.
  void Write(const std::string& dosPath, const std::string& text) const {
    std::string bytes;
    for (const char c : text) {
      if (c == '\n') bytes += '\r';
      bytes += c;
    }
    WriteBytes(dosPath, bytes);
  }
  void WriteBytes(const std::string& dosPath, const std::string& bytes) const {
    files->CreateFolders(dosPath.substr(0, dosPath.rfind('\\')));
    files->Replace(dosPath, bytes);
  }
  std::string Read(const std::string& dosPath) const { return files->Read(dosPath); }
  // The compiler for the next runs: a shell script; $2 is the project file's POSIX path, $LOG the log's.
  // The command line is: <project file> /make|/makedll /out <log>.
  void SetCompiler(const std::string& script) const {
    WriteBytes("C:\\vb6.exe",
               "#!/bin/sh\nC=" + root.Path("drive_c") +
                   "\nposix() { printf '%s' \"$1\" | sed -e 's|^[Cc]:|'\"$C\"'|' -e 's|\\\\|/|g'; }\n"
                   "PROJECT=$(posix \"$1\")\nSWITCH=$2\nLOG=$(posix \"$4\")\n" +
                   script + "\n");
    std::filesystem::permissions(Posix("C:\\vb6.exe"), std::filesystem::perms::owner_all);
  }
  // One option of section "VB", as the store holds it.
  void SetOption(const std::string& key, const std::string& value) const {
    settings->Save("Hearthmake", "VB", {{key, value}});
    apartment->SettingsSlot() = nullptr;
  }

  PosixFolder root;
  std::shared_ptr<posix::DriveMap> drives;
  std::shared_ptr<posix::PosixFileSystem> files;
  std::shared_ptr<TestClock> clock;
  std::shared_ptr<CountingPump> pump;
  std::shared_ptr<RecordingLauncher> launcher;
  std::shared_ptr<RecordingShell> shell;
  std::shared_ptr<posix::RegistryStore> registry;
  std::shared_ptr<MemorySourceControl> sources;
  std::shared_ptr<posix::IniSettingsStore> settings;
  std::unique_ptr<Apartment> apartment;

 private:
  platform::Platform Ports(std::int32_t majorVersion) {
    settings = std::make_shared<posix::IniSettingsStore>(root.Path("settings.ini"));
    settings->Save("Hearthmake", "VB", {{"VBExe", "C:\\vb6.exe"}});
    platform::Platform ports;
    ports.workspace = std::make_shared<sqlite::SqliteWorkspace>(
        [map = drives](std::string_view path) { return map->ToPosix(path).value_or(""); });
    ports.files = files;
    ports.processes = launcher;
    ports.settings = settings;
    ports.registry = registry;
    ports.sources = sources;
    ports.typeLibs = std::make_shared<typelib::TypeLibFileReader>(files);
    shell = std::make_shared<RecordingShell>(std::make_shared<posix::PosixShell>(
        launcher, [keys = registry, libraries = ports.typeLibs](const posix::SelfRegistration& request) {
          typelib::ComponentRegistration registration(*keys, *libraries);
          request.isRemoval ? registration.Unregister(request.path) : registration.Register(request.path);
        }));
    ports.shell = shell;
    ports.events = pump;
    ports.clock = clock;
    ports.system = std::make_shared<posix::PosixSystemInfo>(
        posix::SystemFacts{"C:\\temp\\", "C:\\windows\\system32", "C:\\data", majorVersion});
    ports.scripts = std::make_shared<vbs::VbsScriptEngines>(ports, vbs::Services{});
    return ports;
  }
};

}  // namespace hearthmake::support
