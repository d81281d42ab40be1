#include "adapters/jet/RowStream.hpp"

#include <algorithm>
#include <cstring>
#include <type_traits>
#include <utility>

#include "adapters/jet/Failure.hpp"

namespace hearthmake::jet {

namespace {

constexpr std::string_view kMagic = "hearthmake rows 1\n";

// What a record begins with.
constexpr char kTable = 'T';
constexpr char kRow = 'R';
constexpr char kOther = 'O';
constexpr char kError = 'E';
constexpr char kEnd = '.';

// What a value begins with.
constexpr char kNull = 'n';
constexpr char kNo = '0';
constexpr char kYes = '1';
constexpr char kLong = 'l';
constexpr char kDouble = 'd';
constexpr char kText = 't';

constexpr std::size_t kGathered = 64 * 1024;
constexpr std::size_t kLongestName = 1024;
constexpr std::size_t kLongestText = std::size_t{1} << 30;  // what a memo may hold
constexpr std::size_t kMostColumns = 255;

// The stream ended within a record; never leaves Run.
struct Cut {};

}  // namespace

RowStreamWriter::RowStreamWriter(Write write) : m_write(std::move(write)), m_buffer(kMagic) {}

void RowStreamWriter::BeginTable(const std::string& name, const std::vector<std::string>& columns) {
  m_buffer += kTable;
  PutText(name);
  PutNumber(static_cast<std::uint32_t>(columns.size()));
  for (const std::string& column : columns) PutText(column);
}

void RowStreamWriter::Row(const std::vector<Value>& values) {
  m_buffer += kRow;
  for (const Value& value : values) PutValue(value);
  if (m_buffer.size() >= kGathered) Send();
}

void RowStreamWriter::OtherTable(const std::string& name) {
  m_buffer += kOther;
  PutText(name);
}

void RowStreamWriter::End() {
  m_buffer += kEnd;
  Send();
}

void RowStreamWriter::Fail(std::int32_t number, std::string_view description) {
  m_buffer += kError;
  Put(&number, sizeof number);
  PutText(description);
  Send();
}

void RowStreamWriter::PutValue(const Value& value) {
  std::visit(
      [this](const auto& item) {
        using Item = std::decay_t<decltype(item)>;
        if constexpr (std::is_same_v<Item, std::monostate>) {
          m_buffer += kNull;
        } else if constexpr (std::is_same_v<Item, bool>) {
          m_buffer += item ? kYes : kNo;
        } else if constexpr (std::is_same_v<Item, std::string>) {
          m_buffer += kText;
          PutText(item);
        } else {
          m_buffer += std::is_same_v<Item, double> ? kDouble : kLong;
          Put(&item, sizeof item);
        }
      },
      value);
}

void RowStreamWriter::Put(const void* bytes, std::size_t size) {
  m_buffer.append(static_cast<const char*>(bytes), size);
}

void RowStreamWriter::PutNumber(std::uint32_t number) { Put(&number, sizeof number); }

void RowStreamWriter::PutText(std::string_view text) {
  PutNumber(static_cast<std::uint32_t>(text.size()));
  m_buffer += text;
}

void RowStreamWriter::Send() {
  m_write(m_buffer);
  m_buffer.clear();
}

bool RowStreamReader::Run(RowSink& sink) {
  try {
    std::string magic(kMagic.size(), '\0');
    Take(magic.data(), magic.size());
    if (magic != kMagic) RaiseDamaged("its reader says something else than rows.");
    char kind = 0;
    do {
      Take(&kind, 1);
    } while (TakeRecord(sink, kind));
    return true;
  } catch (const Cut&) {
    return false;
  }
}

bool RowStreamReader::TakeRecord(RowSink& sink, char kind) {
  switch (kind) {
    case kTable: TakeTable(sink); return true;
    case kRow: TakeRow(sink); return true;
    case kOther: sink.OtherTable(TakeText(kLongestName)); return true;
    case kError: TakeError();
    case kEnd: return false;
    default: RaiseDamaged("its reader says what is no row.");
  }
}

void RowStreamReader::TakeTable(RowSink& sink) {
  const std::string name = TakeText(kLongestName);
  m_columns = TakeNumber();
  if (m_columns > kMostColumns) RaiseDamaged("a table has too many columns.");
  std::vector<std::string> columns;
  for (std::size_t i = 0; i < m_columns; ++i) columns.push_back(TakeText(kLongestName));
  m_isInTable = true;
  sink.BeginTable(name, columns);
}

void RowStreamReader::TakeRow(RowSink& sink) {
  if (!m_isInTable) RaiseDamaged("a row belongs to no table.");
  m_row.clear();
  for (std::size_t i = 0; i < m_columns; ++i) m_row.push_back(TakeValue());
  sink.Row(m_row);
}

void RowStreamReader::TakeError() {
  std::int32_t number = 0;
  Take(&number, sizeof number);
  automation::Raise(number, kSource, TakeText(kLongestName));
}

Value RowStreamReader::TakeValue() {
  char kind = 0;
  Take(&kind, 1);
  switch (kind) {
    case kNull: return {};
    case kNo: return false;
    case kYes: return true;
    case kText: return TakeText(kLongestText);
    case kLong: {
      std::int32_t number = 0;
      Take(&number, sizeof number);
      return number;
    }
    case kDouble: {
      double number = 0;
      Take(&number, sizeof number);
      return number;
    }
    default: RaiseDamaged("a value is of no known kind.");
  }
}

// Grows with what comes: a length alone must not claim memory.
std::string RowStreamReader::TakeText(std::size_t longest) {
  std::size_t left = TakeNumber();
  if (left > longest) RaiseDamaged("a text is too long.");
  std::string text;
  while (left > 0) {
    if (m_at == m_buffer.size() && !Fill()) throw Cut();
    const std::size_t count = std::min(left, m_buffer.size() - m_at);
    text.append(m_buffer, m_at, count);
    m_at += count;
    left -= count;
  }
  return text;
}

std::uint32_t RowStreamReader::TakeNumber() {
  std::uint32_t number = 0;
  Take(&number, sizeof number);
  return number;
}

void RowStreamReader::Take(void* bytes, std::size_t size) {
  auto* out = static_cast<char*>(bytes);
  while (size > 0) {
    if (m_at == m_buffer.size() && !Fill()) throw Cut();
    const std::size_t count = std::min(size, m_buffer.size() - m_at);
    std::memcpy(out, m_buffer.data() + m_at, count);
    out += count;
    m_at += count;
    size -= count;
  }
}

bool RowStreamReader::Fill() {
  m_buffer.resize(kGathered);
  m_buffer.resize(std::min(m_read(m_buffer.data(), m_buffer.size()), kGathered));
  m_at = 0;
  m_taken += m_buffer.size();
  if (m_taken > m_limit) RaiseDamaged("it gives more rows than a file of its size can hold.");
  return !m_buffer.empty();
}

}  // namespace hearthmake::jet
