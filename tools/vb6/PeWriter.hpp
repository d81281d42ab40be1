#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "vb6/ResourceSection.hpp"

namespace hearthmake::vb6 {

// A 32-bit Windows image that does nothing: its entry point returns at once.
struct PeImage {
  bool isLibrary = false;  // a DLL or OCX
  std::uint32_t baseAddress = 0x400000;
  std::vector<PeResource> resources;  // those with a type name first, each type once
};

class PeWriter {
 public:
  static std::string Write(const PeImage& image);
};

}  // namespace hearthmake::vb6
