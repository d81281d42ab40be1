#include "vb6/PeWriter.hpp"

#include <string_view>

#include "vb6/ByteWriter.hpp"

namespace hearthmake::vb6 {
namespace {

constexpr std::uint32_t kFileAlignment = 0x200;
constexpr std::uint32_t kSectionAlignment = 0x1000;
constexpr std::uint32_t kDosHeaderSize = 0x40;
constexpr std::uint32_t kCodeAddress = 0x1000;
constexpr std::uint32_t kResourceAddress = 0x2000;
constexpr std::uint32_t kDirectoryCount = 16;
constexpr std::uint32_t kOptionalHeaderSize = 96 + 8 * kDirectoryCount;

// xor eax, eax; ret: a program that ends with 0.
constexpr std::string_view kProgramCode("\x31\xC0\xC3", 3);
// mov eax, 1; ret 12: an entry point that agrees to be loaded.
constexpr std::string_view kLibraryCode("\xB8\x01\x00\x00\x00\xC2\x0C\x00", 8);

std::uint32_t RoundUp(std::uint32_t value, std::uint32_t step) { return (value + step - 1) / step * step; }

void DosHeader(ByteWriter& out) {
  constexpr std::uint32_t kPeHeaderField = 0x3C;
  out.Raw("MZ");
  out.Align(kDosHeaderSize);
  out.SetU32(kPeHeaderField, kDosHeaderSize);
}

void FileHeader(ByteWriter& out, bool isLibrary) {
  constexpr std::uint32_t kProgram = 0x010F;  // executable, 32-bit, no relocations, no symbols
  constexpr std::uint32_t kLibrary = 0x210E;  // the same as a library that may be moved
  out.Raw({"PE\0\0", 4});
  out.U16(0x14C);  // 80386
  out.U16(2);
  out.U32(0);
  out.U32(0);
  out.U32(0);
  out.U16(kOptionalHeaderSize);
  out.U16(isLibrary ? kLibrary : kProgram);
}

void OptionalHeader(ByteWriter& out, const PeImage& image, std::uint32_t resourceSize) {
  constexpr std::uint32_t kWindows = 2;  // the subsystem of programs with a user interface
  constexpr std::uint32_t kResourceDirectory = 2;
  out.U16(0x10B);
  out.U16(6);  // linker 6.0
  out.U32(kFileAlignment);
  out.U32(RoundUp(resourceSize, kFileAlignment));
  out.U32(0);
  out.U32(kCodeAddress);
  out.U32(kCodeAddress);
  out.U32(kResourceAddress);
  out.U32(image.baseAddress);
  out.U32(kSectionAlignment);
  out.U32(kFileAlignment);
  for (int i = 0; i < 3; ++i) {  // operating system, image and subsystem version 4.0
    out.U16(i == 1 ? 0 : 4);
    out.U16(0);
  }
  out.U32(0);
  out.U32(kResourceAddress + RoundUp(resourceSize, kSectionAlignment));
  out.U32(kFileAlignment);
  out.U32(0);
  out.U16(kWindows);
  out.U16(0);
  for (const std::uint32_t size : {0x100000U, 0x1000U, 0x100000U, 0x1000U}) out.U32(size);  // stack, heap
  out.U32(0);
  out.U32(kDirectoryCount);
  for (std::uint32_t i = 0; i < kDirectoryCount; ++i) {
    const bool here = i == kResourceDirectory && !image.resources.empty();
    out.U32(here ? kResourceAddress : 0);
    out.U32(here ? resourceSize : 0);
  }
}

void SectionHeader(ByteWriter& out, std::string_view name, std::uint32_t size, std::uint32_t address,
                   std::uint32_t place, std::uint32_t flags) {
  out.Raw(name);
  out.Align(8);
  out.U32(size);
  out.U32(address);
  out.U32(RoundUp(size, kFileAlignment));
  out.U32(place);
  out.U32(0);
  out.U32(0);
  out.U32(0);
  out.U32(flags);
}

}  // namespace

std::string PeWriter::Write(const PeImage& image) {
  constexpr std::uint32_t kCodeFlags = 0x60000020;      // code, executable, readable
  constexpr std::uint32_t kResourceFlags = 0x40000040;  // data, readable
  const std::string_view code = image.isLibrary ? kLibraryCode : kProgramCode;
  const std::string resources = ResourceSection(image.resources, kResourceAddress);
  const auto resourceSize = static_cast<std::uint32_t>(resources.size());
  ByteWriter out;
  DosHeader(out);
  FileHeader(out, image.isLibrary);
  OptionalHeader(out, image, resourceSize);
  SectionHeader(out, ".text", static_cast<std::uint32_t>(code.size()), kCodeAddress, kFileAlignment,
                kCodeFlags);
  SectionHeader(out, ".rsrc", resourceSize, kResourceAddress, 2 * kFileAlignment, kResourceFlags);
  out.Align(kFileAlignment);
  out.Raw(code);
  out.Align(kFileAlignment);
  out.Raw(resources);
  out.Align(kFileAlignment);
  return out.Bytes();
}

}  // namespace hearthmake::vb6
