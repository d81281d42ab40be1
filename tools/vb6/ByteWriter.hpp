#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace hearthmake::vb6 {

// Bytes that grow at the end; numbers are little-endian.
class ByteWriter {
 public:
  std::size_t Size() const { return m_bytes.size(); }
  std::uint32_t Offset() const { return static_cast<std::uint32_t>(m_bytes.size()); }
  const std::string& Bytes() const { return m_bytes; }

  void U16(std::uint32_t value) { Put(value, 2); }
  void U32(std::uint32_t value) { Put(value, 4); }
  void Raw(std::string_view bytes) { m_bytes += bytes; }
  // Fills up to a multiple of the step.
  void Align(std::size_t step, char filler = '\0') {
    m_bytes.append((step - m_bytes.size() % step) % step, filler);
  }

  // Changes what was written before.
  void SetU16(std::size_t offset, std::uint32_t value) { Set(offset, value, 2); }
  void SetU32(std::size_t offset, std::uint32_t value) { Set(offset, value, 4); }
  std::uint32_t GetU32(std::size_t offset) const {
    std::uint32_t value = 0;
    for (std::size_t i = 4; i-- > 0;)
      value = (value << 8) | static_cast<unsigned char>(m_bytes.at(offset + i));
    return value;
  }

 private:
  void Put(std::uint32_t value, std::size_t count) {
    const std::size_t offset = m_bytes.size();
    m_bytes.append(count, '\0');
    Set(offset, value, count);
  }
  void Set(std::size_t offset, std::uint32_t value, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i)
      m_bytes.at(offset + i) = static_cast<char>((value >> (8 * i)) & 0xFF);
  }

  std::string m_bytes;
};

}  // namespace hearthmake::vb6
