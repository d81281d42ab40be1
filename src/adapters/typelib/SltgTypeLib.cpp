#include "adapters/typelib/SltgTypeLib.hpp"

#include <utility>

#include "adapters/typelib/ByteCursor.hpp"
#include "adapters/typelib/HelpWords.hpp"
#include "adapters/typelib/TypeLibText.hpp"
#include "adapters/typelib/TypeList.hpp"

namespace hearthmake::typelib {

namespace {

constexpr char kHeader[] = "the type library's header";
constexpr char kBlockTable[] = "the block table";
constexpr char kNameTable[] = "the name table";
constexpr char kTypeHeader[] = "a type's header";

constexpr std::uint64_t kHeaderSize = 0x24;
constexpr std::uint64_t kBlockEntrySize = 8;
constexpr std::uint16_t kLibraryMark = 0x51CC;
constexpr std::uint16_t kTypeMark = 0x0501;
constexpr std::uint16_t kNone = 0xFFFF;
constexpr std::uint16_t kDual = 0x40;       // of TYPEFLAGS
constexpr std::uint16_t kHasDiskImage = 8;  // of LIBFLAGS; what was loaded from a file has it

// The field holds the language in which names are compared. It is the library's own only when it is a
// language without a country; else the library is for all.
std::uint32_t LibraryLocale(std::uint16_t language) { return language >> 10 == 0 ? language : 0u; }

// A text's length stands before it; kNone is no text.
std::string ReadText(ByteCursor& cursor) {
  const std::uint16_t length = cursor.U16();
  return length == kNone ? std::string() : cursor.Bytes(length);
}

void SkipText(ByteCursor& cursor) {
  const std::uint16_t length = cursor.U16();
  if (length != kNone) cursor.Skip(length);
}

std::string ReadGuid(ByteCursor& cursor) {
  GuidBytes guid{};
  const std::string bytes = cursor.Bytes(static_cast<std::uint16_t>(guid.size()));
  for (std::size_t i = 0; i < guid.size(); ++i) guid[i] = static_cast<std::uint8_t>(bytes[i]);
  return FormatGuid(guid);
}

}  // namespace

SltgTypeLib::SltgTypeLib(const ByteView& bytes) : m_bytes(bytes) {
  FindBlocks();
  FindWordsAndNames(ReadList(ReadHeading()));
  m_info.name = Name(m_nameOffset);
}

std::vector<platform::TypeDescription> SltgTypeLib::Types() const {
  TypeList types(m_bytes);
  HelpWords words(m_bytes, m_words);
  for (std::size_t i = 0; i < m_list.size(); ++i) {
    platform::TypeDescription type;
    type.name = Name(m_list[i].name);
    type.guid = m_list[i].guid;
    type.helpString = DecodeText(words.Unpack(m_list[i].packedHelp));
    ReadTypeHeader(m_typeBlocks[i], type);
    types.Add(std::move(type));
  }
  return types.Take();
}

// The table gives the blocks' lengths and chains them in the order in which they lie in the file; a zero
// ends the chain. Numbers of blocks count from one.
void SltgTypeLib::FindBlocks() {
  const std::uint16_t counted = m_bytes.U16(0x04, kHeader);
  const std::uint16_t paddingSize = m_bytes.U16(0x06, kHeader);
  const std::uint16_t indexSize = m_bytes.U16(0x08, kHeader);
  const std::uint32_t blocks = counted == 0 ? 0 : counted - 1u;
  std::uint32_t block = m_bytes.U16(0x0A, kHeader);
  std::uint64_t position = kHeaderSize + blocks * kBlockEntrySize + indexSize + paddingSize;
  for (std::uint32_t step = 0; step < blocks && block >= 1 && block <= blocks; ++step) {
    const std::uint64_t entry = kHeaderSize + (block - 1) * kBlockEntrySize;
    block = m_bytes.U16(entry + 6, kBlockTable);
    if (block == 0) {
      m_libraryBlock = position;
      return;
    }
    m_typeBlocks.push_back(position);
    position += m_bytes.U32(entry, kBlockTable);
  }
  m_bytes.FailAt(kHeaderSize, "is damaged: the chain of blocks leads to no library block, starting");
}

std::uint64_t SltgTypeLib::ReadHeading() {
  ByteCursor cursor(m_bytes, m_libraryBlock, "the library block");
  if (cursor.U16() != kLibraryMark) m_bytes.FailAt(m_libraryBlock, "is damaged: there is no library block");
  cursor.Skip(2);
  m_nameOffset = cursor.U16();
  SkipText(cursor);
  m_info.helpString = DecodeText(ReadText(cursor));
  SkipText(cursor);  // help file
  cursor.Skip(6);    // help context, system
  m_info.locale = LibraryLocale(cursor.U16());
  cursor.Skip(4);
  m_info.flags = cursor.U16() | kHasDiskImage;
  m_info.majorVersion = cursor.U16();
  m_info.minorVersion = cursor.U16();
  m_info.guid = ReadGuid(cursor);
  return cursor.Position();
}

std::uint64_t SltgTypeLib::ReadList(std::uint64_t position) {
  constexpr std::uint64_t kHashTableSize = 0x40;
  ByteCursor cursor(m_bytes, position + kHashTableSize, "the list of types");
  const std::uint16_t count = cursor.U16();
  if (count != m_typeBlocks.size()) {
    m_bytes.FailAt(position, "is damaged: " + std::to_string(m_typeBlocks.size()) +
                                 " blocks of types don't go with the list of " + std::to_string(count));
  }
  for (std::uint16_t i = 0; i < count; ++i) {
    ListEntry entry;
    SkipText(cursor);  // the block's name in the index
    SkipText(cursor);
    cursor.Skip(2);
    entry.name = cursor.U16();
    entry.packedHelp = cursor.Bytes(cursor.U16());
    cursor.Skip(8);  // help context between two unknowns
    entry.guid = ReadGuid(cursor);
    cursor.Skip(2);  // kind; the type's own header has it too
    m_list.push_back(std::move(entry));
  }
  return cursor.Position();
}

void SltgTypeLib::FindWordsAndNames(std::uint64_t position) {
  const std::uint64_t table = m_libraryBlock + m_bytes.U32(position, "the place of the name table");
  m_words = position + 4;
  const std::uint16_t form = m_bytes.U16(table, kNameTable);
  if (form != 0xFFFF && form != 0x0200) m_bytes.FailAt(table, "is damaged: there is no name table");
  // A heading of one of two sizes, a hash table, the size of the names; each name has eight bytes before it.
  m_names = table + (form == 0x0200 ? 0x2C : 0x0C) + 0x200 + 4 + 8;
}

void SltgTypeLib::ReadTypeHeader(std::uint64_t block, platform::TypeDescription& type) const {
  if (m_bytes.U16(block, kTypeHeader) != kTypeMark) {
    m_bytes.FailAt(block, "is damaged: there is no header of the type " + type.name);
  }
  type.majorVersion = m_bytes.U16(block + 0x12, kTypeHeader);
  type.minorVersion = m_bytes.U16(block + 0x14, kTypeHeader);
  // Thirteen bits, from the fourth of the first byte on.
  type.flags = static_cast<std::uint16_t>(m_bytes.U16(block + 0x1A, kTypeHeader) >> 3);
  const std::uint8_t kind = m_bytes.U8(block + 0x1D, kTypeHeader);
  if (kind > static_cast<std::uint8_t>(platform::TypeKind::Union)) {
    m_bytes.FailAt(block, "is damaged: there is a type of the unknown kind " + std::to_string(kind));
  }
  // A dual interface is described by its dispatch half, as in the newer format.
  type.kind =
      (type.flags & kDual) != 0 ? platform::TypeKind::Dispatch : static_cast<platform::TypeKind>(kind);
}

std::string SltgTypeLib::Name(std::uint16_t offset) const {
  constexpr std::size_t kLongest = 1024;
  if (offset == kNone) return {};
  std::string name;
  for (std::uint64_t at = m_names + offset;; ++at) {
    const auto character = static_cast<char>(m_bytes.U8(at, "a name"));
    if (character == '\0') return DecodeText(name);
    if (name.size() == kLongest) {
      m_bytes.FailAt(m_names + offset, "is damaged: there is a name without an end");
    }
    name += character;
  }
}

}  // namespace hearthmake::typelib
