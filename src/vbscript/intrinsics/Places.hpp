#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace hearthmake::vbscript {

// Places in a text, in order. The first few need no allocation: most texts are taken apart at few places.
class Places {
 public:
  void Add(std::size_t place) {
    if (m_count < kNear)
      m_near[m_count] = static_cast<std::uint32_t>(place);
    else
      m_far.push_back(static_cast<std::uint32_t>(place));
    ++m_count;
  }
  std::size_t Count() const { return m_count; }
  std::size_t operator[](std::size_t index) const {
    return index < kNear ? m_near[index] : m_far[index - kNear];
  }

 private:
  static constexpr std::size_t kNear = 64;

  std::size_t m_count = 0;
  std::array<std::uint32_t, kNear> m_near;
  std::vector<std::uint32_t> m_far;
};

}  // namespace hearthmake::vbscript
