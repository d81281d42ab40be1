#include "adapters/typelib/PagedFile.hpp"

#include <algorithm>
#include <cstring>
#include <utility>

#include "automation/Error.hpp"

namespace hearthmake::typelib {

PagedFile::PagedFile(platform::RandomAccessFile& file, std::string path)
    : m_file(file), m_path(std::move(path)), m_size(file.Size()) {
  m_numbers.fill(kNoPage);
}

void PagedFile::ReadPages(std::uint64_t offset, void* buffer, std::size_t count) {
  if (count > kPageSize) {
    ReadFile(offset, buffer, count);
    return;
  }
  auto* target = static_cast<std::uint8_t*>(buffer);
  while (count > 0) {
    const std::size_t within = static_cast<std::size_t>(offset % kPageSize);
    const std::size_t piece = std::min(count, kPageSize - within);
    std::memcpy(target, Load(offset / kPageSize).data() + within, piece);
    target += piece;
    offset += piece;
    count -= piece;
  }
}

const PagedFile::Page& PagedFile::Load(std::uint64_t number) {
  const auto known = std::find(m_numbers.begin(), m_numbers.end(), number);
  if (known != m_numbers.end()) {
    m_latest = static_cast<std::size_t>(known - m_numbers.begin());
    return m_pages[m_latest];
  }
  m_latest = m_next;
  m_next = (m_next + 1) % kPages;
  m_numbers[m_latest] = kNoPage;
  const std::uint64_t start = number * kPageSize;
  ReadFile(start, m_pages[m_latest].data(),
           static_cast<std::size_t>(std::min<std::uint64_t>(kPageSize, m_size - start)));
  m_numbers[m_latest] = number;
  return m_pages[m_latest];
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
