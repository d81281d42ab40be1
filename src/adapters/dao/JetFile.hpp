#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace hearthmake::dao {

// The generations of Jet's file format, by what can open them.
enum class JetFormat : std::uint8_t {
  Jet3,  // Access 95 and 97
  Jet4,  // Access 2000 to 2003
  Ace,   // .accdb
};

// The format of a file by its header (path is a DOS path); nothing for one that is missing, can't be read or
// is no Jet file.
std::optional<JetFormat> ReadJetFormat(const std::string& path);

}  // namespace hearthmake::dao
