#include "adapters/sqlite/RowBuffer.hpp"

#include <sqlite3.h>

#include <cstdint>
#include <cstring>

namespace hearthmake::sqlite {

namespace {

constexpr std::size_t kChunkSize = 65536;

template <typename T>
void Put(std::string& out, T value) {
  char bytes[sizeof value];
  std::memcpy(bytes, &value, sizeof value);
  out.append(bytes, sizeof value);
}

template <typename T>
T Take(const std::string& in, std::size_t& at) {
  T value;
  std::memcpy(&value, in.data() + at, sizeof value);
  at += sizeof value;
  return value;
}

void Pack(std::string& out, const Cell& cell) {
  out += static_cast<char>(cell.kind);
  switch (cell.kind) {
    case Cell::Kind::Null: break;
    case Cell::Kind::Integer: Put(out, cell.integer); break;
    case Cell::Kind::Real: Put(out, cell.real); break;
    case Cell::Kind::Text:
      Put(out, static_cast<std::uint32_t>(cell.text.size()));  // SQLite's texts end at 2 GB
      out += cell.text;
  }
}

Cell Unpack(const std::string& in, std::size_t& at) {
  switch (static_cast<Cell::Kind>(in[at++])) {
    case Cell::Kind::Null: break;
    case Cell::Kind::Integer: return Cell::OfInteger(Take<std::int64_t>(in, at));
    case Cell::Kind::Real: return Cell::OfReal(Take<double>(in, at));
    case Cell::Kind::Text: {
      const auto size = Take<std::uint32_t>(in, at);
      const Cell cell = Cell::OfText({in.data() + at, size});
      at += size;
      return cell;
    }
  }
  return {};
}

}  // namespace

void RowBuffer::Append(sqlite3_stmt* statement, int columns) {
  if (m_chunks.empty() || m_chunks.back().size() >= kChunkSize) {
    m_chunks.emplace_back();
    // The first chunk grows as it must: most selections are one small row.
    if (m_chunks.size() > 1) m_chunks.back().reserve(kChunkSize + kChunkSize / 8);
  }
  for (int i = 0; i < columns; ++i) Pack(m_chunks.back(), Cell::OfColumn(statement, i));
}

bool RowBuffer::Next(std::vector<Cell>& cells) {
  if (m_chunk < m_chunks.size() && m_at >= m_chunks[m_chunk].size()) {
    std::string().swap(m_chunks[m_chunk]);
    ++m_chunk;
    m_at = 0;
  }
  if (m_chunk >= m_chunks.size()) return false;
  for (Cell& cell : cells) cell = Unpack(m_chunks[m_chunk], m_at);
  return true;
}

void RowBuffer::Clear() {
  m_chunks.clear();
  m_chunk = 0;
  m_at = 0;
}

}  // namespace hearthmake::sqlite
