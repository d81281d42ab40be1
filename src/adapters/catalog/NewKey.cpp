#include "adapters/catalog/NewKey.hpp"

#include <array>
#include <cstdint>
#include <cstdio>
#include <random>

namespace hearthmake::catalog {

std::string NewKey() {
  std::random_device random;
  std::array<std::uint32_t, 4> bits{random(), random(), random(), random()};
  bits[1] = (bits[1] & 0xFFFF0FFFU) | 0x4000U;      // version: random
  bits[2] = (bits[2] & 0x3FFFFFFFU) | 0x80000000U;  // variant: RFC 4122
  std::array<char, 40> text{};
  std::snprintf(text.data(), text.size(), "{%08X-%04X-%04X-%04X-%04X%08X}", bits[0], bits[1] >> 16,
                bits[1] & 0xFFFFU, bits[2] >> 16, bits[2] & 0xFFFFU, bits[3]);
  return text.data();
}

}  // namespace hearthmake::catalog
