#pragma once

#include <cstdint>
#include <string>

#include "adapters/typelib/ByteView.hpp"

namespace hearthmake::typelib {

// Reads fields of varying length one after the other out of a ByteView.
class ByteCursor {
 public:
  // Errors call what is read `what`.
  ByteCursor(const ByteView& view, std::uint64_t position, PartName what)
      : m_view(view), m_position(position), m_what(what) {}

  std::uint64_t Position() const { return m_position; }

  std::uint16_t U16();
  std::uint32_t U32();
  std::string Bytes(std::uint16_t count);
  // The next count bytes need not be there: the read that follows finds out.
  void Skip(std::uint64_t count) { m_position += count; }

 private:
  const ByteView& m_view;
  std::uint64_t m_position;
  PartName m_what;
};

}  // namespace hearthmake::typelib
