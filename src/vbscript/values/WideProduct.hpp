#pragma once

#include <cstdint>

namespace hearthmake::vbscript {

// A number of 128 bits.
struct WideProduct {
  std::uint64_t high = 0;
  std::uint64_t low = 0;
};

inline WideProduct MultiplyWide(std::uint64_t a, std::uint64_t b) {
#ifdef __SIZEOF_INT128__
  __extension__ using Wide = unsigned __int128;
  const Wide product = static_cast<Wide>(a) * b;
  return {static_cast<std::uint64_t>(product >> 64), static_cast<std::uint64_t>(product)};
#else
  // By halves, where the compiler knows no such number.
  constexpr std::uint64_t kHalf = 0xFFFFFFFF;
  const std::uint64_t lowest = (a & kHalf) * (b & kHalf);
  const std::uint64_t middle = (a >> 32) * (b & kHalf) + (lowest >> 32);
  const std::uint64_t other = (a & kHalf) * (b >> 32) + (middle & kHalf);
  return {(a >> 32) * (b >> 32) + (middle >> 32) + (other >> 32), other << 32 | (lowest & kHalf)};
#endif
}

}  // namespace hearthmake::vbscript
