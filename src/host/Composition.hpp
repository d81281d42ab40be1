#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "adapters/catalog/CatalogFile.hpp"
#include "adapters/posix/DriveMap.hpp"
#include "foundation/Apartment.hpp"
#include "host/HostSettings.hpp"
#include "host/SourceFile.hpp"

namespace hearthmake::host {

class HostEventPump;

// The composition root of the Linux command: chooses the adapters, fills the platform and keeps the
// apartment of the thread. Objects of the library must not outlive it.
class Composition {
 public:
  // The settings must outlive it. HostError where they don't fit together.
  explicit Composition(const HostSettings& settings);
  ~Composition();

  const posix::DriveMap& Drives() const { return *m_drives; }
  // The catalogs of component services.
  const catalog::CatalogFile& Catalog() const { return *m_catalog; }
  // Called several times a second while the library waits for a child.
  void OnTick(std::function<void()> tick);
  // Called for each file that comes from source control.
  void OnSourceFile(std::function<void(const SourceFile& file)> call) { m_onSourceFile = std::move(call); }

 private:
  platform::Platform FillPlatform(const HostSettings& settings);
  void AddCatalogs(platform::Platform& ports) const;
  std::shared_ptr<platform::SourceControl> MakeSources() const;

  std::shared_ptr<posix::DriveMap> m_drives;
  std::shared_ptr<HostEventPump> m_pump;
  std::shared_ptr<const catalog::CatalogFile> m_catalog;
  std::function<void(const SourceFile&)> m_onSourceFile;
  Apartment m_apartment;
};

}  // namespace hearthmake::host
