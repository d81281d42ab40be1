#include "adapters/typelib/PeImage.hpp"

#include <algorithm>
#include <array>
#include <string>

namespace hearthmake::typelib {

namespace {

constexpr char kPeHeader[] = "the PE header";
constexpr char kOptionalHeader[] = "the optional header";
constexpr char kSectionTable[] = "the section table";
constexpr char kResourceDirectory[] = "the resource directory";
constexpr char kResource[] = "the type library";

// In a directory entry: the id is a name's offset, the target is another directory.
constexpr std::uint32_t kHighBit = 0x80000000;

constexpr std::uint32_t kDirectoryHeaderSize = 16;
constexpr std::uint32_t kDirectoryEntrySize = 8;
constexpr std::uint64_t kSectionSize = 40;
constexpr std::uint64_t kResourceDataDirectory = 2;

[[noreturn]] void FailForSignature(const ByteView& file, std::uint32_t signature) {
  switch (signature & 0xFFFF) {
    case 0x454E: file.Fail("is a 16-bit image; type libraries are read from 32- and 64-bit images only");
    case 0x454C:
    case 0x584C: file.Fail("is a driver or OS/2 image, which holds no type library");
    default: file.Fail("is a DOS program or damaged: it has no PE header");
  }
}

}  // namespace

bool PeImage::Recognize(const ByteView& file) {
  return file.Size() >= 2 && file.U16(0, "the DOS header") == 0x5A4D;
}

PeImage::PeImage(const ByteView& file) : m_file(file) {
  const std::uint64_t header = m_file.U32(0x3C, "the DOS header");
  const std::uint32_t signature = m_file.U32(header, kPeHeader);
  if (signature != 0x00004550) FailForSignature(m_file, signature);

  m_sectionCount = m_file.U16(header + 6, kPeHeader);
  const std::uint16_t optionalSize = m_file.U16(header + 20, kPeHeader);
  const std::uint64_t optional = header + 24;
  m_sections = optional + optionalSize;

  const std::uint16_t kind = m_file.U16(optional, kOptionalHeader);
  if (kind != 0x10B && kind != 0x20B) {
    m_file.FailAt(optional, "is damaged: there is a header that is neither of PE32 nor of PE32+");
  }
  m_sectorAligned = m_file.U32(optional + 32, kOptionalHeader) >= 0x1000;
  m_headersSize = m_file.U32(optional + 60, kOptionalHeader);

  const std::uint64_t directoryCount = kind == 0x10B ? 92 : 108;
  const std::uint64_t entry = directoryCount + 4 + kResourceDataDirectory * 8;
  if (m_file.U32(optional + directoryCount, kOptionalHeader) <= kResourceDataDirectory) return;
  if (entry + 8 > optionalSize) return;
  const std::uint32_t address = m_file.U32(optional + entry, kOptionalHeader);
  // The size beside the address is not looked at: loaders ignore it, and packers leave it wrong.
  if (address != 0) m_resources = FileOffset(address, kResourceDirectory);
}

ByteView PeImage::TypeLibrary(std::optional<std::uint32_t> number) const {
  const std::optional<std::uint32_t> type = TypeLibraryDirectory();
  if (!type) m_file.Fail("holds no type library");
  const std::optional<std::uint32_t> library = LibraryDirectory(*type, number);
  if (!library) {
    m_file.Fail(number ? "holds no type library with the resource number " + std::to_string(*number)
                       : "holds no type library");
  }
  return Data(*library);
}

std::optional<std::uint32_t> PeImage::TypeLibraryDirectory() const {
  if (!m_resources) return std::nullopt;
  const std::uint32_t count = NamedEntryCount(0);
  for (std::uint32_t i = 0; i < count; ++i) {
    const Entry entry = EntryAt(0, i);
    if (IsTypeLibName(entry.id)) return Subdirectory(entry);
  }
  return std::nullopt;
}

std::optional<std::uint32_t> PeImage::LibraryDirectory(std::uint32_t typeDirectory,
                                                       std::optional<std::uint32_t> number) const {
  const std::uint32_t count = EntryCount(typeDirectory);
  for (std::uint32_t i = 0; i < count; ++i) {
    const Entry entry = EntryAt(typeDirectory, i);
    if (entry.id == number.value_or(1)) return Subdirectory(entry);
  }
  if (number || count == 0) return std::nullopt;
  return Subdirectory(EntryAt(typeDirectory, 0));
}

ByteView PeImage::Data(std::uint32_t languageDirectory) const {
  if (EntryCount(languageDirectory) == 0) {
    m_file.FailAt(*m_resources + languageDirectory, "is damaged: there is no language in the directory");
  }
  // A library for each language is rare, and all of them have the same identity.
  const Entry language = EntryAt(languageDirectory, 0);
  if ((language.target & kHighBit) != 0) {
    m_file.FailAt(*m_resources + languageDirectory, "is damaged: there is a directory in place of data");
  }
  const std::uint64_t description = *m_resources + language.target;
  const std::uint32_t address = m_file.U32(description, "the resource's description");
  const std::uint32_t size = m_file.U32(description + 4, "the resource's description");
  const std::uint64_t offset = FileOffset(address, kResource);
  return m_file.Part(offset, size, kResource);
}

std::uint32_t PeImage::EntryCount(std::uint32_t directory) const {
  return NamedEntryCount(directory) + m_file.U16(*m_resources + directory + 14, kResourceDirectory);
}

std::uint32_t PeImage::NamedEntryCount(std::uint32_t directory) const {
  return m_file.U16(*m_resources + directory + 12, kResourceDirectory);
}

PeImage::Entry PeImage::EntryAt(std::uint32_t directory, std::uint32_t index) const {
  const std::uint64_t offset =
      *m_resources + directory + kDirectoryHeaderSize + std::uint64_t{index} * kDirectoryEntrySize;
  return {m_file.U32(offset, kResourceDirectory), m_file.U32(offset + 4, kResourceDirectory)};
}

// The directory has three levels (type, number, language), and each step of the way down is made once, so
// entries that lead back up do no harm.
std::uint32_t PeImage::Subdirectory(const Entry& entry) const {
  if ((entry.target & kHighBit) == 0) {
    m_file.FailAt(*m_resources + entry.target, "is damaged: there is data in place of a directory");
  }
  return entry.target & ~kHighBit;
}

bool PeImage::IsTypeLibName(std::uint32_t id) const {
  constexpr std::array<char, 7> kName = {'T', 'Y', 'P', 'E', 'L', 'I', 'B'};
  if ((id & kHighBit) == 0) return false;
  const std::uint64_t name = *m_resources + (id & ~kHighBit);
  if (m_file.U16(name, "a resource's name") != kName.size()) return false;
  for (std::size_t i = 0; i < kName.size(); ++i) {
    const std::uint16_t unit = m_file.U16(name + 2 + i * 2, "a resource's name");
    const bool isLower = unit >= 'a' && unit <= 'z';
    if ((isLower ? unit - 'a' + 'A' : unit) != kName[i]) return false;
  }
  return true;
}

std::uint64_t PeImage::FileOffset(std::uint32_t address, PartName what) const {
  for (std::uint32_t i = 0; i < m_sectionCount; ++i) {
    const std::uint64_t section = m_sections + i * kSectionSize;
    const std::uint32_t size = m_file.U32(section + 8, kSectionTable);
    const std::uint32_t start = m_file.U32(section + 12, kSectionTable);
    const std::uint32_t rawSize = m_file.U32(section + 16, kSectionTable);
    const std::uint32_t raw = m_file.U32(section + 20, kSectionTable);
    if (address < start || address - start >= std::max(size, rawSize)) continue;
    if (address - start >= rawSize) break;
    // Loaders round down to whole sectors, and some linkers count on it.
    return std::uint64_t{m_sectorAligned ? raw & ~0x1FFu : raw} + (address - start);
  }
  if (address < m_headersSize) return address;
  m_file.FailAt(m_sections, std::string("is damaged: ") + what.Text() + " lies in no section of the table");
}

}  // namespace hearthmake::typelib
