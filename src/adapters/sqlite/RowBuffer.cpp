#include "adapters/sqlite/RowBuffer.hpp"

#include <sqlite3.h>

#include <array>
#include <cstdint>
#include <cstring>

namespace hearthmake::sqlite {

namespace {

constexpr std::size_t kChunkSize = 65536;
constexpr std::size_t kFirstChunkSize = 500;

template <typename T>
T Take(const std::string& in, std::size_t& at) {
  T value;
  std::memcpy(&value, in.data() + at, sizeof value);
  at += sizeof value;
  return value;
}

// The kind, then the value; of a text its size and the text itself.
void Pack(std::string& out, const Cell& cell) {
  std::array<char, 1 + sizeof cell.integer> head;
  head[0] = static_cast<char>(cell.kind);
  switch (cell.kind) {
    case Cell::Kind::Null: out += head[0]; return;
    case Cell::Kind::Integer:
    case Cell::Kind::Real:
      std::memcpy(head.data() + 1, &cell.integer, sizeof cell.integer);
      out.append(head.data(), head.size());
      return;
    case Cell::Kind::Text: break;
  }
  const auto size = static_cast<std::uint32_t>(cell.text.size());  // SQLite's texts end at 2 GB
  std::memcpy(head.data() + 1, &size, sizeof size);
  out.append(head.data(), 1 + sizeof size);
  if (size > 0) out += cell.text;
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

RowBuffer::RowBuffer(std::string_view packedRow) { m_chunks.emplace_back(packedRow); }

std::string_view RowBuffer::Append(sqlite3_stmt* statement, int columns) {
  if (m_chunks.empty() || m_chunks.back().size() >= kChunkSize) {
    m_chunks.emplace_back();
    // The first chunk grows as it must: most selections are one small row.
    m_chunks.back().reserve(m_chunks.size() > 1 ? kChunkSize + kChunkSize / 8 : kFirstChunkSize);
  }
  std::string& chunk = m_chunks.back();
  const std::size_t begin = chunk.size();
  for (int i = 0; i < columns; ++i) Pack(chunk, Cell::OfColumn(statement, i));
  return std::string_view(chunk).substr(begin);
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
