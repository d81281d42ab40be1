#pragma once

#include <memory>

#include "adapters/catalog/CatalogFile.hpp"
#include "adapters/posix/DriveMap.hpp"
#include "adapters/posix/PosixProcessLauncher.hpp"
#include "embedding/Options.hpp"
#include "platform/Platform.hpp"

namespace hearthmake::embedding {

// The ports with the adapters that need nothing but this machine: SQLite, git, the script engine that comes
// along, files for the registry and the catalogs. The command and embedded hosts get theirs here.
class DefaultPorts {
 public:
  DefaultPorts(const Options& options, std::shared_ptr<posix::DriveMap> drives);

  const platform::Platform& Ports() const { return m_ports; }
  const posix::DriveMap& Drives() const { return *m_drives; }
  const catalog::CatalogFile& Catalog() const { return *m_catalog; }
  // Ends every child that is running, with what it started.
  void StopChildren() { m_launcher->TerminateRunning(); }

 private:
  void AddMachine(const Options& options);
  void AddFiles(const Options& options);
  void AddSources(const Options& options);
  void AddCatalogs();
  void AddScripts(const Options& options);

  std::shared_ptr<posix::DriveMap> m_drives;
  std::shared_ptr<const catalog::CatalogFile> m_catalog;
  std::shared_ptr<posix::PosixProcessLauncher> m_launcher;
  platform::Platform m_ports;
};

}  // namespace hearthmake::embedding
