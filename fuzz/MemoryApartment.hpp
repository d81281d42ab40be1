#pragma once

#include <memory>
#include <utility>

#include "MemoryFiles.hpp"
#include "foundation/Apartment.hpp"
#include "support/Workbench.hpp"

namespace hearthmake::fuzz {

// The tests' apartment with its files in memory. A target makes one for all its inputs.
class MemoryApartment {
 public:
  MemoryFiles& Files() { return *m_files; }

 private:
  platform::Platform Ports() const {
    platform::Platform ports = m_bench.apartment->Ports();
    ports.files = m_files;
    return ports;
  }

  support::Workbench m_bench;
  std::shared_ptr<MemoryFiles> m_files = std::make_shared<MemoryFiles>();
  Apartment m_apartment{Ports()};
};

}  // namespace hearthmake::fuzz
