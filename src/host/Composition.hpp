#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "adapters/catalog/CatalogFile.hpp"
#include "adapters/posix/DriveMap.hpp"
#include "foundation/Apartment.hpp"
#include "host/HostSettings.hpp"

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

 private:
  platform::Platform FillPlatform(const HostSettings& settings);
  void AddCatalogs(platform::Platform& ports) const;

  std::shared_ptr<posix::DriveMap> m_drives;
  std::shared_ptr<HostEventPump> m_pump;
  std::shared_ptr<const catalog::CatalogFile> m_catalog;
  Apartment m_apartment;
};

}  // namespace hearthmake::host
