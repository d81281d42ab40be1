#pragma once

#include <memory>
#include <string>
#include <vector>

#include "adapters/jet/FileHeader.hpp"
#include "adapters/jet/RowSink.hpp"

namespace hearthmake::jet {

// A Jet database read through libmdb. The library tells a damaged file from a sound one in many places but
// not in all of them, and may end the process: ReadingProcess keeps it away from ours.
class MdbFile {
 public:
  // Errors: 3343 no Jet 3 or Jet 4 file, 3031 encrypted or behind a password, 3049 damaged.
  explicit MdbFile(const std::string& path);
  ~MdbFile();
  MdbFile(const MdbFile&) = delete;
  MdbFile& operator=(const MdbFile&) = delete;

  // Reads the tables of those names (without regard to case) into the sink, in the order of the file, and
  // names the other tables of the user. A column of a type that no build has (a picture, a decimal) is left
  // out. Errors: 3049 a table that can't be read whole.
  void Read(const std::vector<std::string>& tables, RowSink& sink);

 private:
  struct Library;
  std::unique_ptr<Library> m_library;
};

// Error as MdbFile has it, for what can be told by the header alone.
FileHeader RequireReadable(std::string_view firstBytes);

}  // namespace hearthmake::jet
