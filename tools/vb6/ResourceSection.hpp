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

// The bytes of a section of resources that will be loaded at an address of the image: the directory of types,
// for each a directory with its one number and one with its one language, the places of the data, the names,
// the data. Types with names stand first, each type once.
std::string ResourceSection(const std::vector<PeResource>& resources, std::uint32_t address);

}  // namespace hearthmake::vb6
