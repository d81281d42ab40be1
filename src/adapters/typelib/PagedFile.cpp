#include "adapters/typelib/PagedFile.hpp"

#include <algorithm>
#include <cstring>
#include <utility>

#include "automation/Error.hpp"

namespace hearthmake::typelib {

PagedFile::PagedFile(platform::RandomAccessFile& file, std::string path)
    : m_file(file), m_path(std::move(path)), m_size(file.Size()) {}

void PagedFile::ReadPages(std::uint64_t offset, void* buffer, std::size_t count) {
  if (count > kPageSize) {
    ReadFile(offset, buffer, count);
    return;
  }
  auto* target = static_cast<std::uint8_t*>(buffer);
  while (count > 0) {
    const std::size_t within = static_cast<std::size_t>(offset % kPageSize);
    const std::size_t piece = std::min(count, kPageSize - within);
    std::memcpy(target, Load(offset / kPageSize).bytes.data() + within, piece);
    target += piece;
    offset += piece;
    count -= piece;
  }
}

const PagedFile::Page& PagedFile::Load(std::uint64_t number) {
  if (m_pages[m_latest].number == number) return m_pages[m_latest];
  for (std::size_t i = 0; i < kPages; ++i) {
    if (m_pages[i].number == number) {
      m_latest = i;
      return m_pages[i];
    }
  }
  Page& page = m_pages[m_next];
  page.number = kNoPage;
  const std::uint64_t start = number * kPageSize;
  ReadFile(start, page.bytes.data(),
           static_cast<std::size_t>(std::min<std::uint64_t>(kPageSize, m_size - start)));
  page.number = number;
  m_latest = m_next;
  m_next = (m_next + 1) % kPages;
  return page;
}

void PagedFile::ReadFile(std::uint64_t offset, void* buffer, std::size_t count) {
  auto* target = static_cast<std::uint8_t*>(buffer);
  while (count > 0) {
    const std::size_t got = m_file.Read(offset, target, count);
    if (got == 0 || got > count) {
      automation::Raise(automation::kInvalidValue, "TypeLibReader",
                        m_path + " became shorter while it was read");
    }
    target += got;
    offset += got;
    count -= got;
  }
}

}  // namespace hearthmake::typelib
