#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include "adapters/typelib/ByteView.hpp"
#include "platform/TypeLibReader.hpp"

namespace hearthmake::typelib {

// The types of a library while they are gathered, each made to look as Windows shows it.
//
// Any number of types may point at one long text, so a small damaged file could ask for gigabytes: the sum
// of the texts is limited.
class TypeList {
 public:
  static constexpr std::size_t kMostText = std::size_t{64} << 20;

  explicit TypeList(const ByteView& library) : m_library(library) {}

  // A GUID of zeros becomes none; a dispatch interface loses the flag 0x100 (OLE automation), which is its
  // vtable half's alone. Raises error 45 through the library's ByteView when the texts pass kMostText bytes.
  void Add(platform::TypeDescription type);
  std::vector<platform::TypeDescription> Take() { return std::move(m_types); }

 private:
  ByteView m_library;
  std::vector<platform::TypeDescription> m_types;
  std::size_t m_text = 0;
};

}  // namespace hearthmake::typelib
