#pragma once

#include <string>

#include "platform/FileSystem.hpp"
#include "vbscript/Budget.hpp"

namespace hearthmake::vbscript {

// The version that a Windows program or library carries in its resources, as "1.2.3.4"; "" for a file that
// has none. Reads the file in pieces, from the start on.
std::string ReadFileVersion(platform::RandomAccessFile& file, Budget& budget);

}  // namespace hearthmake::vbscript
