#include "vb6/ResourceSection.hpp"

#include <algorithm>

#include "vb6/ByteWriter.hpp"

namespace hearthmake::vb6 {
namespace {

constexpr std::uint32_t kEnglish = 0x409;
constexpr std::uint32_t kHighBit = 0x80000000;

void DirectoryHead(ByteWriter& out, std::size_t named, std::size_t numbered) {
  out.U32(0);
  out.U32(0);
  out.U32(0);
  out.U16(static_cast<std::uint32_t>(named));
  out.U16(static_cast<std::uint32_t>(numbered));
}

}  // namespace

std::string ResourceSection(const std::vector<PeResource>& resources, std::uint32_t address) {
  constexpr std::uint32_t kOneEntryDirectory = 16 + 8;
  const auto count = static_cast<std::uint32_t>(resources.size());
  const auto named = static_cast<std::size_t>(std::count_if(
      resources.begin(), resources.end(), [](const PeResource& r) { return !r.typeName.empty(); }));
  const std::uint32_t idDirectories = 16 + 8 * count;
  const std::uint32_t languageDirectories = idDirectories + kOneEntryDirectory * count;
  const std::uint32_t places = languageDirectories + kOneEntryDirectory * count;

  ByteWriter names;
  ByteWriter out;
  DirectoryHead(out, named, resources.size() - named);
  for (std::uint32_t i = 0; i < count; ++i) {
    const PeResource& resource = resources[i];
    out.U32(resource.typeName.empty() ? resource.typeId : kHighBit | (places + 16 * count + names.Offset()));
    out.U32(kHighBit | (idDirectories + kOneEntryDirectory * i));
    if (resource.typeName.empty()) continue;
    names.U16(static_cast<std::uint32_t>(resource.typeName.size()));
    for (const char c : resource.typeName) names.U16(static_cast<unsigned char>(c));
  }
  for (std::uint32_t i = 0; i < count; ++i) {
    DirectoryHead(out, 0, 1);
    out.U32(resources[i].id);
    out.U32(kHighBit | (languageDirectories + kOneEntryDirectory * i));
  }
  for (std::uint32_t i = 0; i < count; ++i) {
    DirectoryHead(out, 0, 1);
    out.U32(kEnglish);
    out.U32(places + 16 * i);
  }
  const std::uint32_t placesOffset = out.Offset();
  for (const PeResource& resource : resources) {
    out.U32(0);  // its address, below
    out.U32(static_cast<std::uint32_t>(resource.bytes.size()));
    out.U32(0);
    out.U32(0);
  }
  out.Raw(names.Bytes());
  for (std::uint32_t i = 0; i < count; ++i) {
    out.Align(8);
    out.SetU32(placesOffset + 16 * i, address + out.Offset());
    out.Raw(resources[i].bytes);
  }
  return out.Bytes();
}

}  // namespace hearthmake::vb6
