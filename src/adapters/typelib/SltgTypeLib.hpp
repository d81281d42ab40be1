#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "adapters/typelib/ByteView.hpp"
#include "adapters/typelib/TypeLib.hpp"

namespace hearthmake::typelib {

// The old format (mark "SLTG"), which Visual Basic 4 and its contemporaries wrote: a chain of blocks, one
// for each type, the last one the library's own. Its makers never described it; this agrees with what Wine
// makes of such files.
//
// The library block is, without a directory: a heading with texts of varying length, a list with an entry
// for each type, the words that the types' help strings are packed with, and the names.
class SltgTypeLib final : public TypeLib {
 public:
  // Reads the library block. Raises error 45, source "TypeLibReader", when it is damaged.
  explicit SltgTypeLib(const ByteView& bytes);

  platform::TypeLibInfo Info() const override { return m_info; }
  std::vector<platform::TypeDescription> Types() const override;

 private:
  // What the list in the library block says of a type.
  struct ListEntry {
    std::uint16_t name = 0;
    std::string packedHelp;
    std::string guid;
  };

  // Each finds what the next one needs; the parts of the library block follow one another in the file.
  void FindBlocks();
  std::uint64_t ReadHeading();
  std::uint64_t ReadList(std::uint64_t position);
  void FindWordsAndNames(std::uint64_t position);

  void ReadTypeHeader(std::uint64_t block, platform::TypeDescription& type) const;
  std::string Name(std::uint16_t offset) const;

  ByteView m_bytes;
  std::vector<std::uint64_t> m_typeBlocks;  // offsets, in library order
  std::uint64_t m_libraryBlock = 0;
  std::uint16_t m_nameOffset = 0;
  std::vector<ListEntry> m_list;
  std::uint64_t m_words = 0;
  std::uint64_t m_names = 0;
  platform::TypeLibInfo m_info;
};

}  // namespace hearthmake::typelib
