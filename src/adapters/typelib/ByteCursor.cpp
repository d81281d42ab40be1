#include "adapters/typelib/ByteCursor.hpp"

namespace hearthmake::typelib {

std::uint16_t ByteCursor::U16() {
  const std::uint16_t number = m_view.U16(m_position, m_what);
  m_position += 2;
  return number;
}

std::uint32_t ByteCursor::U32() {
  const std::uint32_t number = m_view.U32(m_position, m_what);
  m_position += 4;
  return number;
}

std::string ByteCursor::Bytes(std::uint16_t count) {
  std::string bytes = m_view.Bytes(m_position, count, m_what);
  m_position += count;
  return bytes;
}

}  // namespace hearthmake::typelib
