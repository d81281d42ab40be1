#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace hearthmake::jet {

enum class Version {
  Jet3,   // of Access 95 and 97
  Jet4,   // of Access 2000 to 2003
  Newer,  // of Access 2007 and later
};

// What the first page of a database says without being asked for more.
struct FileHeader {
  Version version = Version::Jet4;
  bool isEncrypted = false;
  bool hasPassword = false;
  std::uint16_t codePage = 0;  // of texts in Jet 3; 0 where it is not told
};

// As many bytes from the start of a file as tell its header.
inline constexpr std::size_t kHeaderSize = 0x98;

// Nothing for what is no Jet file. A file that ends within its header is none.
std::optional<FileHeader> ReadHeader(std::string_view firstBytes);

const char* VersionName(Version version);

}  // namespace hearthmake::jet
