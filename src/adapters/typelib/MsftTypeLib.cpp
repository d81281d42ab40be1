#include "adapters/typelib/MsftTypeLib.hpp"

#include "adapters/typelib/TypeLibText.hpp"
#include "adapters/typelib/TypeList.hpp"

namespace hearthmake::typelib {

namespace {

constexpr char kHeader[] = "the type library's header";
constexpr char kDirectory[] = "the segment directory";
constexpr char kRecord[] = "a type's record";

// Offsets of the header's fields.
constexpr std::uint64_t kGuidField = 0x08;
constexpr std::uint64_t kLocaleField = 0x10;  // the one at 0x0C is the language names are compared in
constexpr std::uint64_t kVariantField = 0x14;
constexpr std::uint64_t kVersionField = 0x18;
constexpr std::uint64_t kFlagsField = 0x1C;
constexpr std::uint64_t kTypeCountField = 0x20;
constexpr std::uint64_t kHelpStringField = 0x24;
constexpr std::uint64_t kNameField = 0x38;
constexpr std::uint64_t kHeaderSize = 0x54;
// A bit of the field at kVariantField: the name of a help DLL stands before the segment directory.
constexpr std::uint32_t kHasHelpDll = 0x100;

// Segments by their place in the directory.
constexpr unsigned kTypeSegment = 0;
constexpr unsigned kImportSegment = 1;
constexpr unsigned kGuidSegment = 5;
constexpr unsigned kNameSegment = 7;
constexpr unsigned kStringSegment = 8;
constexpr std::uint64_t kSegmentEntrySize = 16;
// The last field of a directory entry. Loaders know the directory by it, as there is no other mark.
constexpr std::uint32_t kSegmentMark = 0x0F;

constexpr std::uint64_t kTypeRecordSize = 0x64;

// A library that was loaded from a file has this flag, whatever the file says.
constexpr std::uint16_t kHasDiskImage = 8;

std::uint16_t Low(std::uint32_t number) { return static_cast<std::uint16_t>(number & 0xFFFF); }
std::uint16_t High(std::uint32_t number) { return static_cast<std::uint16_t>(number >> 16); }

std::uint64_t FindDirectory(const ByteView& bytes, std::uint32_t typeCount) {
  const bool hasHelpDll = (bytes.U32(kVariantField, kHeader) & kHasHelpDll) != 0;
  const std::uint64_t directory = kHeaderSize + std::uint64_t{typeCount} * 4 + (hasHelpDll ? 4 : 0);
  for (const unsigned segment : {kTypeSegment, kImportSegment}) {
    if (bytes.U32(directory + segment * kSegmentEntrySize + 12, kDirectory) != kSegmentMark) {
      bytes.FailAt(directory, "is damaged: there is no segment directory");
    }
  }
  return directory;
}

}  // namespace

MsftTypeLib::MsftTypeLib(const ByteView& bytes)
    : m_bytes(bytes),
      m_typeCount(bytes.U32(kTypeCountField, kHeader)),
      m_directory(FindDirectory(bytes, m_typeCount)),
      m_guids(Segment(kGuidSegment, "the GUID table")),
      m_names(Segment(kNameSegment, "the name table")),
      m_strings(Segment(kStringSegment, "the string table")) {}

platform::TypeLibInfo MsftTypeLib::Info() const {
  const std::uint32_t version = m_bytes.U32(kVersionField, kHeader);
  platform::TypeLibInfo info;
  info.guid = Guid(m_bytes.U32(kGuidField, kHeader));
  if (info.guid.empty()) info.guid = kNullGuid;
  info.majorVersion = Low(version);
  info.minorVersion = High(version);
  info.locale = m_bytes.U32(kLocaleField, kHeader);
  info.flags = Low(m_bytes.U32(kFlagsField, kHeader)) | kHasDiskImage;
  info.name = Name(m_bytes.U32(kNameField, kHeader));
  info.helpString = String(m_bytes.U32(kHelpStringField, kHeader));
  return info;
}

std::vector<platform::TypeDescription> MsftTypeLib::Types() const {
  const ByteView table = Segment(kTypeSegment, "the type table");
  TypeList types(m_bytes);
  for (std::uint32_t i = 0; i < m_typeCount; ++i) {
    types.Add(Type(table.Part(i * kTypeRecordSize, kTypeRecordSize, kRecord)));
  }
  return types.Take();
}

platform::TypeDescription MsftTypeLib::Type(const ByteView& record) const {
  const unsigned kind = record.U32(0x00, kRecord) & 0xF;
  if (kind > static_cast<unsigned>(platform::TypeKind::Union)) {
    record.FailAt(0, "is damaged: there is a type of the unknown kind " + std::to_string(kind));
  }
  const std::uint32_t version = record.U32(0x38, kRecord);
  platform::TypeDescription type;
  type.kind = static_cast<platform::TypeKind>(kind);
  type.guid = Guid(record.U32(0x2C, kRecord));
  type.flags = Low(record.U32(0x30, kRecord));
  type.name = Name(record.U32(0x34, kRecord));
  type.majorVersion = Low(version);
  type.minorVersion = High(version);
  type.helpString = String(record.U32(0x3C, kRecord));
  return type;
}

ByteView MsftTypeLib::Segment(unsigned index, PartName what) const {
  const std::uint64_t entry = m_directory + index * kSegmentEntrySize;
  const std::uint32_t offset = m_bytes.U32(entry, kDirectory);
  const std::uint32_t length = m_bytes.U32(entry + 4, kDirectory);
  // A segment that is not there has the offset -1.
  if (offset == kNone) return m_bytes.Part(0, 0, what);
  return m_bytes.Part(offset, length, what);
}

std::string MsftTypeLib::Guid(std::uint32_t offset) const {
  if (offset == kNone) return {};
  GuidBytes guid;
  m_guids.Read(offset, guid.data(), guid.size(), "a GUID");
  return FormatGuid(guid);
}

std::string MsftTypeLib::Name(std::uint32_t offset) const {
  constexpr std::uint64_t kIntroSize = 12;
  if (offset == kNone) return {};
  // The length has eight bits; flags and the hash of the name share its field.
  const std::uint16_t length = m_names.U8(std::uint64_t{offset} + 8, "a name");
  return DecodeText(m_names.Bytes(offset + kIntroSize, length, "a name"));
}

std::string MsftTypeLib::String(std::uint32_t offset) const {
  if (offset == kNone) return {};
  const std::uint16_t length = m_strings.U16(offset, "a string");
  return DecodeText(m_strings.Bytes(std::uint64_t{offset} + 2, length, "a string"));
}

}  // namespace hearthmake::typelib
