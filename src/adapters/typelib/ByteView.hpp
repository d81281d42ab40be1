#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "adapters/typelib/PagedFile.hpp"

namespace hearthmake::typelib {

// What a part of a file is called in errors, as in "the name table". Made of literals and constants only,
// because it is kept without being copied.
class PartName {
 public:
  consteval PartName(const char* text) : m_text(text) {}  // NOLINT(google-explicit-constructor)
  const char* Text() const { return m_text; }

 private:
  const char* m_text;
};

// A stretch of a file whose every read is checked against its bounds: the whole file, a resource in it,
// a table in that. Cheap to copy; the PagedFile must outlive it. Numbers are little-endian.
//
// A read that leaves the stretch raises error 45, source "TypeLibReader", with a text that names the file,
// what was to be read and its place in the file.
class ByteView {
 public:
  // A whole file.
  explicit ByteView(PagedFile& file);

  std::uint64_t Size() const { return m_size; }

  std::uint8_t U8(std::uint64_t offset, PartName what) const;
  std::uint16_t U16(std::uint64_t offset, PartName what) const;
  std::uint32_t U32(std::uint64_t offset, PartName what) const;
  void Read(std::uint64_t offset, void* buffer, std::size_t count, PartName what) const;
  // At most 64 KiB: no length field of the formats has more than sixteen bits.
  std::string Bytes(std::uint64_t offset, std::uint16_t count, PartName what) const;

  // The stretch inside this one that starts at offset and has size bytes.
  ByteView Part(std::uint64_t offset, std::uint64_t size, PartName what) const;

  // Raises error 45, source "TypeLibReader", text: the file's path, a blank, the problem.
  [[noreturn]] void Fail(const std::string& problem) const;
  // The same, with the offset's place in the file behind the problem: "… at 0x1F0".
  [[noreturn]] void FailAt(std::uint64_t offset, const std::string& problem) const;

 private:
  void Check(std::uint64_t offset, std::uint64_t count, PartName what) const;

  PagedFile* m_file;
  std::uint64_t m_start = 0;
  std::uint64_t m_size;
  bool m_isWhole = true;
  PartName m_name = "the file";
};

}  // namespace hearthmake::typelib
