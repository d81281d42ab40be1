#include "vb6/VersionResource.hpp"

#include <array>
#include <string_view>
#include <utility>

#include "automation/Utf.hpp"
#include "vb6/ByteWriter.hpp"

namespace hearthmake::vb6 {
namespace {

constexpr std::uint32_t kText = 1;
constexpr std::uint32_t kBinary = 0;

void PutText(ByteWriter& out, std::string_view text) {
  for (const char c : automation::Utf8ToWindows1252(text))
    out.U16(automation::Windows1252Character(static_cast<unsigned char>(c)));
  out.U16(0);
}

// Begins a block: length (filled in by EndBlock), length of the value, kind, key.
std::size_t BeginBlock(ByteWriter& out, std::string_view key, std::uint32_t valueLength, std::uint32_t kind) {
  out.Align(4);
  const std::size_t start = out.Size();
  out.U16(0);
  out.U16(valueLength);
  out.U16(kind);
  PutText(out, key);
  out.Align(4);
  return start;
}

void EndBlock(ByteWriter& out, std::size_t start) {
  out.SetU16(start, static_cast<std::uint32_t>(out.Size() - start));
}

void PutString(ByteWriter& out, std::string_view key, std::string_view value) {
  if (value.empty()) return;
  const auto length = static_cast<std::uint32_t>(automation::Utf8ToWindows1252(value).size() + 1);
  const std::size_t block = BeginBlock(out, key, length, kText);
  PutText(out, value);
  EndBlock(out, block);
}

void PutFixedInfo(ByteWriter& out, const ProjectFile& project) {
  constexpr std::uint32_t kWindows32 = 4;
  const std::uint32_t high = (project.Number("MajorVer", 1) << 16) | (project.Number("MinorVer") & 0xFFFF);
  const std::uint32_t low = project.Number("RevisionVer") & 0xFFFF;
  out.U32(0xFEEF04BD);
  out.U32(0x10000);
  for (int fileThenProduct = 0; fileThenProduct < 2; ++fileThenProduct) {
    out.U32(high);
    out.U32(low);
  }
  out.U32(0);
  out.U32(0);
  out.U32(kWindows32);
  out.U32(project.IsInProcess() ? 2 : 1);
  out.U32(0);
  out.U32(0);
  out.U32(0);
}

std::string VersionText(const ProjectFile& project) {
  std::string revision = std::to_string(project.Number("RevisionVer"));
  if (revision.size() < 4) revision.insert(0, 4 - revision.size(), '0');  // as Visual Basic shows it
  return std::to_string(project.Number("MajorVer", 1)) + "." + std::to_string(project.Number("MinorVer")) +
         "." + revision;
}

}  // namespace

std::string VersionResource(const ProjectFile& project, const std::string& exeName) {
  constexpr std::uint32_t kFixedInfoSize = 52;
  constexpr std::array<std::pair<std::string_view, std::string_view>, 6> kTexts = {{
      {"Comments", "VersionComments"},
      {"CompanyName", "VersionCompanyName"},
      {"FileDescription", "VersionFileDescription"},
      {"LegalCopyright", "VersionLegalCopyright"},
      {"LegalTrademarks", "VersionLegalTrademarks"},
      {"ProductName", "VersionProductName"},
  }};
  ByteWriter out;
  const std::size_t root = BeginBlock(out, "VS_VERSION_INFO", kFixedInfoSize, kBinary);
  PutFixedInfo(out, project);
  const std::size_t variables = BeginBlock(out, "VarFileInfo", 0, kBinary);
  const std::size_t translation = BeginBlock(out, "Translation", 4, kBinary);
  out.U16(0x409);
  out.U16(0x4B0);
  EndBlock(out, translation);
  EndBlock(out, variables);
  const std::size_t strings = BeginBlock(out, "StringFileInfo", 0, kText);
  const std::size_t table = BeginBlock(out, "040904B0", 0, kText);
  for (const auto& [name, key] : kTexts) PutString(out, name, project.Value(key));
  PutString(out, "FileVersion", VersionText(project));
  PutString(out, "ProductVersion", VersionText(project));
  PutString(out, "InternalName", project.Value("Name"));
  PutString(out, "OriginalFilename", exeName);
  EndBlock(out, table);
  EndBlock(out, strings);
  EndBlock(out, root);
  return out.Bytes();
}

}  // namespace hearthmake::vb6
