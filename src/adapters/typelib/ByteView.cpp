#include "adapters/typelib/ByteView.hpp"

#include <array>
#include <cstdio>

#include "automation/Error.hpp"

namespace hearthmake::typelib {

namespace {

std::string Hexadecimal(std::uint64_t number) {
  std::array<char, 24> text{};
  std::snprintf(text.data(), text.size(), "0x%llX", static_cast<unsigned long long>(number));
  return text.data();
}

}  // namespace

ByteView::ByteView(PagedFile& file) : m_file(&file), m_size(file.Size()) {}

std::uint8_t ByteView::U8(std::uint64_t offset, PartName what) const {
  std::uint8_t byte = 0;
  Read(offset, &byte, 1, what);
  return byte;
}

std::uint16_t ByteView::U16(std::uint64_t offset, PartName what) const {
  std::array<std::uint8_t, 2> b{};
  Read(offset, b.data(), b.size(), what);
  return static_cast<std::uint16_t>(b[0] | b[1] << 8);
}

std::uint32_t ByteView::U32(std::uint64_t offset, PartName what) const {
  std::array<std::uint8_t, 4> b{};
  Read(offset, b.data(), b.size(), what);
  return static_cast<std::uint32_t>(b[0]) | static_cast<std::uint32_t>(b[1]) << 8 |
         static_cast<std::uint32_t>(b[2]) << 16 | static_cast<std::uint32_t>(b[3]) << 24;
}

void ByteView::Read(std::uint64_t offset, void* buffer, std::size_t count, PartName what) const {
  Check(offset, count, what);
  m_file->Read(m_start + offset, buffer, count);
}

std::string ByteView::Bytes(std::uint64_t offset, std::uint16_t count, PartName what) const {
  Check(offset, count, what);
  std::string bytes(count, '\0');
  m_file->Read(m_start + offset, bytes.data(), bytes.size());
  return bytes;
}

ByteView ByteView::Part(std::uint64_t offset, std::uint64_t size, PartName what) const {
  Check(offset, size, what);
  ByteView part = *this;
  part.m_start += offset;
  part.m_size = size;
  part.m_isWhole = false;
  part.m_name = what;
  return part;
}

void ByteView::Fail(const std::string& problem) const {
  automation::Raise(automation::kInvalidValue, "TypeLibReader", m_file->Path() + " " + problem);
}

void ByteView::FailAt(std::uint64_t offset, const std::string& problem) const {
  Fail(problem + " at " + Hexadecimal(m_start + offset));
}

void ByteView::Check(std::uint64_t offset, std::uint64_t count, PartName what) const {
  if (count <= m_size && offset <= m_size - count) return;
  const std::string problem = m_isWhole ? "is cut off: " : "is damaged: ";
  Fail(problem + what.Text() + " at " + Hexadecimal(m_start + offset) + " lies outside " + m_name.Text());
}

}  // namespace hearthmake::typelib
