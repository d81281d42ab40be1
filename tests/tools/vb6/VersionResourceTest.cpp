#include "vb6/VersionResource.hpp"

#include <gtest/gtest.h>

#include "automation/Utf.hpp"

namespace hearthmake::vb6 {
namespace {

std::string Wide(std::string_view text) {
  std::string bytes;
  for (const char c : automation::Utf8ToWindows1252(text)) {
    const char16_t character = automation::Windows1252Character(static_cast<unsigned char>(c));
    bytes += static_cast<char>(character & 0xFF);
    bytes += static_cast<char>(character >> 8);
  }
  return bytes;
}

TEST(VersionResource, HoldsTheVersionAndTheTextsOfTheProject) {
  const auto project = ProjectFile::Parse(
      "Type=OleDll\r\nMajorVer=3\r\nMinorVer=1\r\nRevisionVer=118\r\nVersionCompanyName=\"Caf\xE9\"\r\n");
  const std::string bytes = VersionResource(project, "Lib.dll");
  const auto length = static_cast<std::size_t>(static_cast<unsigned char>(bytes[0])) |
                      static_cast<std::size_t>(static_cast<unsigned char>(bytes[1])) << 8;
  EXPECT_EQ(length, bytes.size());
  const std::size_t fixedInfo = bytes.find("\xBD\x04\xEF\xFE");
  ASSERT_NE(fixedInfo, std::string::npos);
  EXPECT_EQ(bytes.substr(fixedInfo + 8, 8), std::string("\x01\x00\x03\x00\x76\x00\x00\x00", 8));
  for (const char* text : {"CompanyName", "Café", "FileVersion", "3.1.0118", "OriginalFilename", "Lib.dll"}) {
    EXPECT_NE(bytes.find(Wide(text)), std::string::npos) << text;
  }
  EXPECT_EQ(bytes.find(Wide("Comments")), std::string::npos) << "an empty text is left out";
}

}  // namespace
}  // namespace hearthmake::vb6
