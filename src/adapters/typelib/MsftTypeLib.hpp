#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "adapters/typelib/ByteView.hpp"
#include "adapters/typelib/TypeLib.hpp"

namespace hearthmake::typelib {

// The format of every type library made since 1996 (mark "MSFT"): a header, a directory of fifteen
// segments, and the segments: types, GUIDs, names, strings and what hangs on them.
class MsftTypeLib final : public TypeLib {
 public:
  // Raises error 45, source "TypeLibReader", when header or segment directory is damaged.
  explicit MsftTypeLib(const ByteView& bytes);

  platform::TypeLibInfo Info() const override;
  std::vector<platform::TypeDescription> Types() const override;

 private:
  ByteView Segment(unsigned index, PartName what) const;
  platform::TypeDescription Type(const ByteView& record) const;

  // Each takes the offset in the GUID, name or string table; kNone gives an empty text.
  std::string Guid(std::uint32_t offset) const;
  std::string Name(std::uint32_t offset) const;
  std::string String(std::uint32_t offset) const;

  static constexpr std::uint32_t kNone = 0xFFFFFFFF;

  ByteView m_bytes;
  std::uint32_t m_typeCount;
  std::uint64_t m_directory;  // offset of the segment directory
  ByteView m_guids;
  ByteView m_names;
  ByteView m_strings;
};

}  // namespace hearthmake::typelib
