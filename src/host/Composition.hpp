#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "adapters/catalog/CatalogFile.hpp"
#include "foundation/Apartment.hpp"
#include "host/HostSettings.hpp"
#include "host/SourceFile.hpp"

namespace hearthmake::host {

class HostEventPump;

// The composition root of the command: chooses the adapters, fills the platform and keeps the apartment of
// the thread. Each operating system has its own. Objects of the library must not outlive it.
class Composition {
 public:
  // The settings must outlive it. HostError where they don't fit together.
  explicit Composition(const HostSettings& settings);
  ~Composition();

  // The DOS path of one of the system's paths, made absolute.
  std::string ToDosPath(const std::string& systemPath) const;
  // The system's path; nothing where the DOS path leads nowhere.
  std::optional<std::string> ToSystemPath(const std::string& dosPath) const;
  // The file that stands for the catalogs of component services; HostError where they are the system's own.
  const catalog::CatalogFile& Catalog() const;
  // Called several times a second while the library waits for a child.
  void OnTick(std::function<void()> tick);
  // Called for each file that comes from source control.
  void OnSourceFile(std::function<void(const SourceFile& file)> call) { m_onSourceFile = std::move(call); }

 private:
  struct System;  // what only this system's composition knows

  platform::Platform FillPlatform(const HostSettings& settings);

  std::unique_ptr<System> m_system;
  std::shared_ptr<HostEventPump> m_pump;
  std::function<void(const SourceFile&)> m_onSourceFile;
  Apartment m_apartment;
};

}  // namespace hearthmake::host
