#include "adapters/jet/MdbFile.hpp"

#include <mdbtools.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <optional>
#include <utility>

#include "adapters/jet/Failure.hpp"
#include "adapters/jet/TextCode.hpp"
#include "automation/Text.hpp"

namespace hearthmake::jet {

namespace {

// A page's table of rows: where each begins, and two flags.
constexpr int kStartMask = 0x1FFF;
// The row has moved to another page, where it is met in its turn, or is deleted.
constexpr int kIsElsewhere = 0x4000;
constexpr int kMostRowsOfPage = 1000;

// A long text's field: its length with two flags on top, where it begins, and four bytes for Jet.
constexpr std::size_t kMemoHead = 12;
constexpr std::uint32_t kIsInline = 0x80000000;
constexpr std::uint32_t kIsOnePiece = 0x40000000;
constexpr std::uint32_t kMemoLength = 0x3FFFFFFF;
constexpr std::size_t kMemoLink = 4;

template <class Number>
Number ReadNumber(std::string_view bytes) {
  Number number{};
  if (bytes.size() < sizeof number) RaiseDamaged("a value is shorter than its type.");
  std::memcpy(&number, bytes.data(), sizeof number);
  return number;
}

// A kind of column that a build may have.
bool IsKnownType(int type) {
  switch (type) {
    case MDB_BOOL:
    case MDB_BYTE:
    case MDB_INT:
    case MDB_LONGINT:
    case MDB_MONEY:
    case MDB_FLOAT:
    case MDB_DOUBLE:
    case MDB_DATETIME:
    case MDB_TEXT:
    case MDB_MEMO: return true;
    default: return false;
  }
}

FileHeader HeaderOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::string bytes(kHeaderSize, '\0');
  file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  bytes.resize(static_cast<std::size_t>(file.gcount()));
  return RequireReadable(bytes);
}

struct TableFree {
  void operator()(MdbTableDef* table) const { mdb_free_tabledef(table); }
};
using Table = std::unique_ptr<MdbTableDef, TableFree>;

MdbColumn* ColumnOf(const MdbTableDef* table, unsigned index) {
  return static_cast<MdbColumn*>(g_ptr_array_index(table->columns, index));
}

}  // namespace

FileHeader RequireReadable(std::string_view firstBytes) {
  const std::optional<FileHeader> header = ReadHeader(firstBytes);
  if (!header) automation::Raise(kForeignFormat, kSource, "It is no Jet database.");
  if (header->version == Version::Newer) {
    automation::Raise(kForeignFormat, kSource,
                      "It is a database of Access 2007 or later; those of Jet 3 and Jet 4 can be read.");
  }
  if (header->isEncrypted) automation::Raise(kLocked, kSource, "The database is encrypted.");
  if (header->hasPassword) automation::Raise(kLocked, kSource, "The database has a password.");
  return *header;
}

// What libmdb has open, and how its texts are read.
struct MdbFile::Library {
  explicit Library(const std::string& path) : header(HeaderOf(path)), texts(header) {
    // What a user has set for the tools of libmdb must not change what is read here.
    for (const char* name : {"MDB_JET3_CHARSET", "MDBICONV", "MDBOPTS"}) unsetenv(name);
    file = mdb_open(path.c_str(), MDB_NOFLAGS);
    if (file == nullptr) RaiseDamaged("its first page can't be read.");
  }
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;
  ~Library() { mdb_close(file); }

  void ReadTable(MdbCatalogEntry* entry, RowSink& sink);
  void ReadPage(MdbTableDef* table, const std::string& name, const std::vector<unsigned>& columns,
                std::vector<MdbField>& fields, std::size_t& rows, RowSink& sink);
  Value ReadField(int type, const MdbField& field, std::string_view row, int rowStart);
  Value ReadValue(int type, std::string_view bytes);
  std::string ReadMemo(std::string_view field);
  std::string ReadPieces(std::uint32_t start, std::size_t length, bool isOnePiece);
  std::string_view FindPiece(std::uint32_t place);

  FileHeader header;
  TextCode texts;
  MdbHandle* file = nullptr;
};

MdbFile::MdbFile(const std::string& path) : m_library(std::make_unique<Library>(path)) {}

MdbFile::~MdbFile() = default;

void MdbFile::Read(const std::vector<std::string>& tables, RowSink& sink) {
  const GPtrArray* catalog = mdb_read_catalog(m_library->file, MDB_TABLE);
  if (catalog == nullptr || catalog->len == 0) RaiseDamaged("its list of tables can't be read.");
  const auto isWanted = [&](const char* name) {
    return std::any_of(tables.begin(), tables.end(), [&](const std::string& wanted) {
      return automation::EqualsIgnoreCaseAscii(wanted, name);
    });
  };
  for (guint i = 0; i < catalog->len; ++i) {
    auto* entry = static_cast<MdbCatalogEntry*>(g_ptr_array_index(catalog, i));
    if (mdb_is_user_table(entry) == 0) continue;
    if (isWanted(entry->object_name)) {
      m_library->ReadTable(entry, sink);
    } else {
      sink.OtherTable(entry->object_name);
    }
  }
}

void MdbFile::Library::ReadTable(MdbCatalogEntry* entry, RowSink& sink) {
  const std::string name = entry->object_name;
  const Table table(mdb_read_table(entry));
  if (!table || mdb_read_columns(table.get()) == nullptr || table->columns->len != table->num_cols ||
      table->usage_map == nullptr) {
    RaiseDamaged("the table " + name + " can't be read.");
  }
  std::vector<unsigned> columns;
  std::vector<std::string> names;
  for (unsigned i = 0; i < table->num_cols; ++i) {
    const MdbColumn* column = ColumnOf(table.get(), i);
    if (!IsKnownType(column->col_type)) continue;
    columns.push_back(i);
    names.emplace_back(column->name);
  }
  sink.BeginTable(name, names);
  std::vector<MdbField> fields(table->num_cols);
  std::size_t rows = 0;
  mdb_rewind_table(table.get());
  while (mdb_read_next_dpg(table.get()) != 0) ReadPage(table.get(), name, columns, fields, rows, sink);
  // A file that was not closed in the end may count too few, but never too many.
  if (rows >= table->num_rows) return;
  RaiseDamaged("the table " + name + " should have " + std::to_string(table->num_rows) + " rows, and " +
               std::to_string(rows) + " can be found.");
}

void MdbFile::Library::ReadPage(MdbTableDef* table, const std::string& name,
                                const std::vector<unsigned>& columns, std::vector<MdbField>& fields,
                                std::size_t& rows, RowSink& sink) {
  const auto raise = [&] { RaiseDamaged("a row of the table " + name + " can't be read."); };
  const int count = mdb_get_int16(file->pg_buf, file->fmt->row_count_offset);
  if (count > kMostRowsOfPage) raise();
  std::vector<Value> values(columns.size());
  for (int slot = 0; slot < count; ++slot) {
    int start = 0;
    std::size_t size = 0;
    const bool isSound = mdb_find_row(file, slot, &start, &size) == 0;
    if ((start & kIsElsewhere) != 0) continue;
    start &= kStartMask;
    const auto pageSize = static_cast<std::size_t>(file->fmt->pg_size);
    if (!isSound || static_cast<std::size_t>(start) + size > pageSize) raise();
    if (size == 0 || mdb_crack_row(table, start, size, fields.data()) < 0) raise();
    // As a copy: reading a long text moves pages about.
    const std::string row(reinterpret_cast<const char*>(file->pg_buf) + start, size);
    for (std::size_t i = 0; i < columns.size(); ++i) {
      values[i] = ReadField(ColumnOf(table, columns[i])->col_type, fields[columns[i]], row, start);
    }
    sink.Row(values);
    ++rows;
  }
}

Value MdbFile::Library::ReadField(int type, const MdbField& field, std::string_view row, int rowStart) {
  if (type == MDB_BOOL) return field.is_null == 0;
  if (field.is_null != 0) return {};
  const long start = static_cast<long>(field.start) - rowStart;
  if (start < 0 || field.siz < 0 || static_cast<std::size_t>(start) > row.size() ||
      static_cast<std::size_t>(field.siz) > row.size() - static_cast<std::size_t>(start)) {
    RaiseDamaged("a value lies outside its row.");
  }
  return ReadValue(type, row.substr(static_cast<std::size_t>(start), static_cast<std::size_t>(field.siz)));
}

Value MdbFile::Library::ReadValue(int type, std::string_view bytes) {
  switch (type) {
    case MDB_BYTE: return static_cast<std::int32_t>(ReadNumber<std::uint8_t>(bytes));
    case MDB_INT: return static_cast<std::int32_t>(ReadNumber<std::int16_t>(bytes));
    case MDB_LONGINT: return ReadNumber<std::int32_t>(bytes);
    case MDB_MONEY: return static_cast<double>(ReadNumber<std::int64_t>(bytes)) / 10000;
    case MDB_FLOAT: return static_cast<double>(ReadNumber<float>(bytes));
    case MDB_DOUBLE:
    case MDB_DATETIME: return ReadNumber<double>(bytes);
    case MDB_MEMO: return texts.Decode(ReadMemo(bytes));
    default: return texts.Decode(bytes);
  }
}

std::string MdbFile::Library::ReadMemo(std::string_view field) {
  if (field.empty()) return {};
  if (field.size() < kMemoHead) RaiseDamaged("a long text has no place.");
  const auto head = ReadNumber<std::uint32_t>(field);
  const std::size_t length = head & kMemoLength;
  if ((head & kIsInline) != 0) {
    if (length > field.size() - kMemoHead) RaiseDamaged("a long text is shorter than it says.");
    return std::string(field.substr(kMemoHead, length));
  }
  if (length == 0) return {};
  return ReadPieces(ReadNumber<std::uint32_t>(field.substr(4)), length, (head & kIsOnePiece) != 0);
}

// Each piece but that of a text in one piece begins with the place of the next. The length, which no file can
// exceed by going in circles, ends the walk.
std::string MdbFile::Library::ReadPieces(std::uint32_t place, std::size_t length, bool isOnePiece) {
  const std::size_t link = isOnePiece ? 0 : kMemoLink;
  std::string text;
  while (text.size() < length) {
    const std::string_view piece = place == 0 ? std::string_view() : FindPiece(place);
    if (piece.size() <= link) RaiseDamaged("a piece of a long text is missing.");
    text += piece.substr(link, length - text.size());
    place = isOnePiece ? 0 : ReadNumber<std::uint32_t>(piece);
  }
  return text;
}

std::string_view MdbFile::Library::FindPiece(std::uint32_t place) {
  void* page = nullptr;
  int start = 0;
  std::size_t size = 0;
  if (mdb_find_pg_row(file, static_cast<int>(place), &page, &start, &size) != 0 || page == nullptr) return {};
  const auto pageSize = static_cast<std::size_t>(file->fmt->pg_size);
  if (start < 0 || static_cast<std::size_t>(start) > pageSize) return {};
  if (size > pageSize - static_cast<std::size_t>(start)) return {};
  return {static_cast<const char*>(page) + start, size};
}

}  // namespace hearthmake::jet
