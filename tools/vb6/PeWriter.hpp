#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace hearthmake::vb6 {

// One resource of an image, in English.
struct PeResource {
  std::string typeName;      // in capitals; empty when the type has a number
  std::uint16_t typeId = 0;  // 16 = version information
  std::uint16_t id = 1;
  std::string bytes;
};

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
