#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

namespace hearthmake::test {

// Bytes that grow at the end, for fixtures; numbers are little-endian.
class TypeLibBytes {
 public:
  std::size_t Size() const { return m_bytes.size(); }
  const std::string& Text() const { return m_bytes; }

  TypeLibBytes& U8(std::uint32_t number) { return Number(number, 1); }
  TypeLibBytes& U16(std::uint32_t number) { return Number(number, 2); }
  TypeLibBytes& U32(std::uint32_t number) { return Number(number, 4); }
  TypeLibBytes& Raw(std::string_view bytes) {
    m_bytes += bytes;
    return *this;
  }
  TypeLibBytes& Fill(std::size_t count, char byte = '\0') {
    m_bytes.append(count, byte);
    return *this;
  }
  // Zeros up to this size.
  TypeLibBytes& PadTo(std::size_t size) {
    if (size < m_bytes.size()) throw std::logic_error("the fixture is already longer");
    return Fill(size - m_bytes.size());
  }
  TypeLibBytes& Align(std::size_t unit) { return Fill((unit - m_bytes.size() % unit) % unit); }

  void SetU16(std::size_t offset, std::uint32_t number) { Set(offset, number, 2); }
  void SetU32(std::size_t offset, std::uint32_t number) { Set(offset, number, 4); }

 private:
  TypeLibBytes& Number(std::uint32_t number, unsigned size) {
    m_bytes.append(size, '\0');
    Set(m_bytes.size() - size, number, size);
    return *this;
  }
  void Set(std::size_t offset, std::uint32_t number, unsigned size) {
    for (unsigned i = 0; i < size; ++i) m_bytes.at(offset + i) = static_cast<char>(number >> (8 * i) & 0xFF);
  }

  std::string m_bytes;
};

// The bytes with the number at offset replaced.
inline std::string WithU32(std::string bytes, std::size_t offset, std::uint32_t number) {
  for (unsigned i = 0; i < 4; ++i) bytes.at(offset + i) = static_cast<char>(number >> (8 * i) & 0xFF);
  return bytes;
}

inline std::string WithU16(std::string bytes, std::size_t offset, std::uint32_t number) {
  for (unsigned i = 0; i < 2; ++i) bytes.at(offset + i) = static_cast<char>(number >> (8 * i) & 0xFF);
  return bytes;
}

inline std::uint32_t U32At(std::string_view bytes, std::size_t offset) {
  std::uint32_t number = 0;
  for (unsigned i = 0; i < 4; ++i) {
    number |= static_cast<std::uint32_t>(static_cast<unsigned char>(bytes.at(offset + i))) << (8 * i);
  }
  return number;
}

}  // namespace hearthmake::test
