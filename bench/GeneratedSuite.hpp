#pragma once

#include <string>

namespace hearthmake::bench {

// Writes a suite of count projects below a folder: DLLs in folders of fifty, each referencing up to four
// earlier ones by relative path, with binaries in bin/ that are links to one binary.
void GenerateSuite(const std::string& folder, int count, const std::string& binary);

}  // namespace hearthmake::bench
