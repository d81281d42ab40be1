#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

#include "adapters/jet/ReadingProcess.hpp"
#include "adapters/jet/RowStream.hpp"
#include "adapters/jet/TextCode.hpp"
#include "automation/Error.hpp"
#include "support/JetRows.hpp"

using namespace hearthmake::jet;

namespace {

void RequireRows(const hearthmake::support::CollectedRows& rows) {
  for (const auto& table : rows.tables) {
    for (const auto& row : table.rows) {
      if (row.size() != table.columns.size()) std::abort();
    }
  }
}

// A database: its reader may come to any end, in a process of its own.
void ReadDatabase(std::string_view bytes) {
  const int file = memfd_create("fuzz", MFD_CLOEXEC);
  if (file < 0) std::abort();
  if (write(file, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size())) std::abort();
  ReadingProcess::Options options;
  options.tables = {"Build",      "Project",     "References", "ExternalReferences",
                    "SSProjects", "MTSPackages", "Scripts"};
  options.secondsOfProcessor = 2;
  hearthmake::support::CollectedRows rows;
  try {
    ReadingProcess("/proc/self/fd/" + std::to_string(file), options).Read(rows);
  } catch (const hearthmake::automation::Error&) {
  }
  close(file);
  RequireRows(rows);
}

// What such a process might say.
void ReadStream(std::string_view bytes) {
  const auto read = [&](char* buffer, std::size_t size) {
    const std::size_t count = std::min({size, bytes.size(), std::size_t{100}});
    std::memcpy(buffer, bytes.data(), count);
    bytes.remove_prefix(count);
    return count;
  };
  hearthmake::support::CollectedRows rows;
  try {
    RowStreamReader(read, 1 << 20).Run(rows);
  } catch (const hearthmake::automation::Error&) {
    return;
  }
  RequireRows(rows);
}

void DecodeTexts(std::string_view bytes) {
  for (const unsigned codePage : {1252U, 932U, 1251U}) {
    for (const Version version : {Version::Jet3, Version::Jet4}) {
      FileHeader header;
      header.version = version;
      header.codePage = static_cast<std::uint16_t>(codePage);
      // Three bytes of UTF-8 for each stored one at most, which the limit of a stream counts on.
      if (TextCode(header).Decode(bytes).size() > 3 * bytes.size()) std::abort();
    }
  }
}

}  // namespace

// A Jet database, or else the words of its reader, which are also taken for a stored text.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  if (ReadHeader(bytes)) {
    ReadDatabase(bytes);
  } else {
    ReadStream(bytes);
    DecodeTexts(bytes);
  }
  return 0;
}
