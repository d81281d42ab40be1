#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "automation/Utf.hpp"

namespace hearthmake::support {

// Writes small Jet databases, of which it knows as much as a reader looks at: no indexes, no properties,
// tables whose definitions fit in a page.
class JetFileWriter {
 public:
  using Value = std::variant<std::monostate, bool, std::int32_t, double, std::string>;
  enum class Type : std::uint8_t {
    YesNo = 1,
    Byte = 2,
    Integer = 3,
    Long = 4,
    Double = 7,
    Date = 8,
    Text = 10,
    Ole = 11,
    Memo = 12
  };
  struct Column {
    std::string name;
    Type type;
  };
  struct Table {
    std::string name;
    std::vector<Column> columns;
    std::vector<std::vector<Value>> rows;
    std::uint32_t flags = 0;           // as its entry in the list of tables has them
    std::size_t deleted = 0;           // so many of the first rows are deleted
    std::uint32_t countedTooMany = 0;  // rows that its definition counts and that are not there
  };

  explicit JetFileWriter(int version) : m_isJet4(version == 4), m_pageSize(m_isJet4 ? 4096 : 2048) {}

  std::vector<Table> tables;
  std::string password;
  std::uint32_t key = 0;  // of an encrypted file
  std::uint16_t codePage = 1252;

  std::string Write() {
    m_pages.assign(3, std::string(m_pageSize, '\0'));
    m_maps.clear();
    Table list{"MSysObjects",
               {{"Id", Type::Long},
                {"Name", Type::Text},
                {"Type", Type::Integer},
                {"Flags", Type::Long},
                {"LvProp", Type::Ole}},
               {},
               0,
               0,
               0};
    for (const Table& table : tables) {
      const auto place = static_cast<std::int32_t>(AddPage());
      PutTable(table, static_cast<std::size_t>(place));
      list.rows.push_back({place, table.name, 1, static_cast<std::int32_t>(table.flags), {}});
    }
    PutTable(list, 2);
    PutHeader();
    PutRows(1, 0, m_maps);
    std::string bytes;
    for (const std::string& page : m_pages) bytes += page;
    return bytes;
  }

 private:
  // Where things stand in a page; first of Jet 4, then of Jet 3.
  std::size_t At(std::size_t jet4, std::size_t jet3) const { return m_isJet4 ? jet4 : jet3; }

  static void Put(std::string& bytes, std::size_t at, std::uint64_t number, std::size_t size) {
    for (std::size_t i = 0; i < size; ++i) bytes[at + i] = static_cast<char>(number >> (8 * i) & 0xFF);
  }
  static std::string Number(std::uint64_t number, std::size_t size) {
    std::string bytes(size, '\0');
    Put(bytes, 0, number, size);
    return bytes;
  }

  std::size_t AddPage() {
    m_pages.emplace_back(m_pageSize, '\0');
    return m_pages.size() - 1;
  }

  std::string TextBytes(const std::string& text) const {
    if (!m_isJet4) return automation::Utf8ToWindows1252(text);
    const std::u16string units = automation::Utf8ToUtf16(text);
    const auto isShort = [](char16_t unit) { return unit > 0 && unit < 0x100; };
    const bool isCompressed = units.size() > 2 && std::all_of(units.begin(), units.end(), isShort);
    std::string bytes = isCompressed ? "\xFF\xFE" : "";
    for (const char16_t unit : units) bytes += Number(unit, isCompressed ? 1 : 2);
    return bytes;
  }

  static bool IsFixed(Type type) { return type != Type::Text && type != Type::Memo && type != Type::Ole; }
  static std::size_t SizeOf(Type type) {
    switch (type) {
      case Type::Byte: return 1;
      case Type::Integer: return 2;
      case Type::Long: return 4;
      case Type::Double:
      case Type::Date: return 8;
      default: return 0;
    }
  }

  // Rows of a page lie from its end on, and their starts behind their number.
  void PutRows(std::size_t page, std::uint32_t owner, const std::vector<std::string>& rows,
               std::size_t deleted = 0) {
    std::string& bytes = m_pages[page];
    bytes[0] = 1;
    bytes[1] = 1;
    Put(bytes, 4, owner, 4);
    const std::size_t count = At(12, 8);
    Put(bytes, count, rows.size(), 2);
    std::size_t start = m_pageSize;
    for (std::size_t i = 0; i < rows.size(); ++i) {
      start -= rows[i].size();
      bytes.replace(start, rows[i].size(), rows[i]);
      Put(bytes, count + 2 + 2 * i, start | (i < deleted ? 0xC000U : 0U), 2);
    }
  }

  static constexpr std::uint32_t kLongTexts = 0x4C41564C;  // "LVAL"

  std::uint32_t AddPiece(const std::string& bytes) {
    const std::size_t page = AddPage();
    PutRows(page, kLongTexts, {bytes});
    return static_cast<std::uint32_t>(page << 8);
  }

  std::string MemoBytes(const std::string& text) {
    const std::string bytes = TextBytes(text);
    constexpr std::size_t kInline = 64;
    constexpr std::size_t kPiece = 1900;
    const auto head = [&](std::uint32_t kind, std::uint32_t place) {
      return Number(kind | bytes.size(), 4) + Number(place, 4) + Number(0, 4);
    };
    if (bytes.size() <= kInline) return head(0x80000000, 0) + bytes;
    if (bytes.size() <= kPiece) return head(0x40000000, AddPiece(bytes));
    std::uint32_t next = 0;
    for (std::size_t begin = (bytes.size() - 1) / kPiece * kPiece;; begin -= kPiece) {
      next = AddPiece(Number(next, 4) + bytes.substr(begin, kPiece));
      if (begin == 0) return head(0, next);
    }
  }

  std::string FieldBytes(Type type, const Value& value) {
    if (const auto* number = std::get_if<std::int32_t>(&value))
      return Number(static_cast<std::uint32_t>(*number), SizeOf(type));
    if (const auto* number = std::get_if<double>(&value))
      return Number(std::bit_cast<std::uint64_t>(*number), 8);
    if (const auto* text = std::get_if<std::string>(&value))
      return type == Type::Memo ? MemoBytes(*text) : TextBytes(*text);
    return std::string(SizeOf(type), '\0');
  }

  std::string RowBytes(const Table& table, const std::vector<Value>& values) {
    const std::size_t numberSize = At(2, 1);
    std::string row = Number(values.size(), numberSize);
    std::string mask((values.size() + 7) / 8, '\0');
    std::vector<std::size_t> starts;
    for (const bool fixed : {true, false}) {
      for (std::size_t i = 0; i < values.size(); ++i) {
        const Type type = table.columns[i].type;
        if (IsFixed(type) != fixed) continue;
        if (!fixed) starts.push_back(row.size());
        const auto* flag = std::get_if<bool>(&values[i]);
        const bool isSet = flag != nullptr ? *flag : !std::holds_alternative<std::monostate>(values[i]);
        if (isSet) mask[i / 8] = static_cast<char>(mask[i / 8] | 1 << (i % 8));
        row += FieldBytes(type, values[i]);
      }
    }
    if (!starts.empty()) {
      row += Number(row.size(), numberSize);
      const std::size_t count = starts.size();
      for (; !starts.empty(); starts.pop_back()) row += Number(starts.back(), numberSize);
      row += Number(count, numberSize);
    }
    return row + mask;
  }

  void PutTable(const Table& table, std::size_t definition) {
    std::vector<std::string> rows;
    std::vector<std::size_t> pages;
    std::size_t used = 0;
    std::size_t done = 0;
    const auto flush = [&] {
      if (rows.empty()) return;
      pages.push_back(AddPage());
      const std::size_t deleted = table.deleted > done ? std::min(rows.size(), table.deleted - done) : 0;
      PutRows(pages.back(), static_cast<std::uint32_t>(definition), rows, deleted);
      done += rows.size();
      rows.clear();
      used = 0;
    };
    for (const auto& values : table.rows) {
      const std::string row = RowBytes(table, values);
      if (used + row.size() + 2 > m_pageSize - 32) flush();
      used += row.size() + 2;
      rows.push_back(row);
    }
    flush();
    PutDefinition(table, definition, pages);
  }

  void PutDefinition(const Table& table, std::size_t definition, const std::vector<std::size_t>& pages) {
    std::string map(5 + 64, '\0');
    for (const std::size_t page : pages) {
      map[5 + page / 8] = static_cast<char>(map[5 + page / 8] | 1 << (page % 8));
    }
    const std::size_t place = 1 << 8 | m_maps.size();
    m_maps.push_back(map);

    std::string& bytes = m_pages[definition];
    bytes[0] = 2;
    bytes[1] = 1;
    Put(bytes, At(16, 12), table.rows.size() - table.deleted + table.countedTooMany, 4);
    Put(bytes, At(45, 25), table.columns.size(), 2);
    Put(bytes, At(55, 35), place, 4);
    Put(bytes, At(59, 39), place, 4);
    std::string names;
    std::size_t at = At(63, 43);
    std::size_t fixedOffset = 0;
    std::size_t variable = 0;
    for (std::size_t i = 0; i < table.columns.size(); ++i, at += At(25, 18)) {
      const Type type = table.columns[i].type;
      bytes[at] = static_cast<char>(type);
      Put(bytes, at + At(5, 1), i, 1);
      Put(bytes, at + At(7, 3), variable, 2);
      Put(bytes, at + At(9, 5), i, 2);
      Put(bytes, at + At(15, 13), IsFixed(type) ? 3 : 2, 1);
      Put(bytes, at + At(21, 14), fixedOffset, 2);
      Put(bytes, at + At(23, 16), IsFixed(type) ? SizeOf(type) : 255, 2);
      fixedOffset += SizeOf(type);
      if (!IsFixed(type)) ++variable;
      std::string name;
      for (const char c : table.columns[i].name) name += Number(static_cast<unsigned char>(c), At(2, 1));
      names += Number(name.size(), At(2, 1)) + name;
    }
    Put(bytes, At(43, 23), variable, 2);
    bytes.replace(at, names.size(), names);
  }

  static void Mask(std::string& bytes, std::size_t at, std::size_t size) {
    constexpr std::array<unsigned, 4> kKey = {0xC7, 0xDA, 0x39, 0x6B};
    std::array<unsigned, 256> s{};
    std::iota(s.begin(), s.end(), 0U);
    for (unsigned i = 0, j = 0; i < 256; ++i) std::swap(s[i], s[j = (j + s[i] + kKey[i % 4]) % 256]);
    for (unsigned i = 0, j = 0; size-- > 0; ++at) {
      i = (i + 1) % 256;
      std::swap(s[i], s[j = (j + s[i]) % 256]);
      bytes[at] = static_cast<char>(static_cast<unsigned char>(bytes[at]) ^ s[(s[i] + s[j]) % 256]);
    }
  }

  void PutHeader() {
    std::string& bytes = m_pages[0];
    bytes.replace(0, 20, std::string("\0\1\0\0Standard Jet DB\0", 20));
    bytes[20] = m_isJet4 ? 1 : 0;
    Put(bytes, 0x3A, 0x409, 2);
    Put(bytes, 0x3C, codePage, 2);
    Put(bytes, 0x3E, key, 4);
    const double created = 37755.5;
    for (std::size_t i = 0; i < password.size(); ++i) {
      Put(bytes, 0x42 + i * At(2, 1), static_cast<unsigned char>(password[i]), 1);
    }
    if (m_isJet4) {
      for (std::size_t i = 0; i < 40; ++i) {
        const unsigned mask = static_cast<unsigned>(created) >> (8 * (i % 4)) & 0xFF;
        bytes[0x42 + i] = static_cast<char>(static_cast<unsigned char>(bytes[0x42 + i]) ^ mask);
      }
      Put(bytes, 0x72, std::bit_cast<std::uint64_t>(created), 8);
    }
    Mask(bytes, 0x18, At(128, 126));
  }

  bool m_isJet4;
  std::size_t m_pageSize;
  std::vector<std::string> m_pages;
  std::vector<std::string> m_maps;  // which pages are whose
};

// A database of two builds as old as can be: three tables, few columns.
inline JetFileWriter SmallBuilds(int version) {
  using Type = JetFileWriter::Type;
  JetFileWriter writer(version);
  writer.tables = {
      {"Build",
       {{"Id", Type::Long}, {"Name", Type::Text}},
       {{3, "Gone"}, {4, "Büro"}, {7, "Laden – €"}},
       0,
       1,
       0},
      {"Project",
       {{"Id", Type::Long},
        {"idBuild", Type::Long},
        {"ProjectPath", Type::Text},
        {"Name", Type::Text},
        {"Compile", Type::YesNo},
        {"PreserveBinary", Type::YesNo},
        {"LastCompiled", Type::Date}},
       {{11, 4, "C:\\Büro\\Kern.vbp", "\"Kern\"", true, false, 37755.729224537034},
        {12, 4, "C:\\Büro\\Rest.vbp", {}, false, true, {}},
        {15, 7, "", "\"Kasse\"", true, true, -1.25}},
       0,
       0,
       0},
      {"Scripts",
       {{"BuildID", Type::Long},
        {"BeforeSSafe", Type::Memo},
        {"BeforeCompile", Type::Memo},
        {"AfterMTS", Type::Memo}},
       {{4, "' kurz", std::string(1500, 'x') + "ü", std::string(30000, 'y') + "ß"}, {7, {}, "", {}}},
       0,
       0,
       0}};
  return writer;
}

}  // namespace hearthmake::support
