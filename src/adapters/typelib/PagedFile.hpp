#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include "platform/FileSystem.hpp"

namespace hearthmake::typelib {

// An open file, read a page at a time: the headers and tables of an image are many small fields in few
// places, and this turns a read per field into a read per place.
class PagedFile {
 public:
  // The file must outlive this object. Errors name it by the path.
  PagedFile(platform::RandomAccessFile& file, std::string path);

  const std::string& Path() const { return m_path; }
  std::uint64_t Size() const { return m_size; }

  // Copies count bytes from offset; the caller has made sure that they lie inside Size(). A file that has
  // become shorter meanwhile raises error 45, source "TypeLibReader".
  void Read(std::uint64_t offset, void* buffer, std::size_t count) {
    // Nearly every field lies in the page of the one before.
    const std::size_t within = static_cast<std::size_t>(offset % kPageSize);
    if (offset / kPageSize == m_numbers[m_latest] && count <= kPageSize - within) {
      std::memcpy(buffer, m_pages[m_latest].data() + within, count);
    } else {
      ReadPages(offset, buffer, count);
    }
  }

 private:
  static constexpr std::size_t kPageSize = 4096;
  static constexpr std::size_t kPages = 8;
  static constexpr std::uint64_t kNoPage = UINT64_MAX;

  using Page = std::array<std::uint8_t, kPageSize>;

  void ReadPages(std::uint64_t offset, void* buffer, std::size_t count);
  const Page& Load(std::uint64_t number);
  void ReadFile(std::uint64_t offset, void* buffer, std::size_t count);

  platform::RandomAccessFile& m_file;
  std::string m_path;
  std::uint64_t m_size;
  std::array<std::uint64_t, kPages> m_numbers;  // of the pages; apart from them, so that most stay untouched
  std::array<Page, kPages> m_pages;             // left as they are: clearing would cost as much as reading
  std::size_t m_latest = 0;
  std::size_t m_next = 0;
};

}  // namespace hearthmake::typelib
