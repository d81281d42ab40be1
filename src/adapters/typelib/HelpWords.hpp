#pragma once

#include <cstdint>
#include <string>

#include "adapters/typelib/ByteView.hpp"

namespace hearthmake::typelib {

// The words that the help strings in an SLTG library are packed with: a binary tree whose leaves are words.
// A packed string is a row of bits; from the root, each leads down one branch, until a leaf gives a word;
// the leaf without a word, or the end of the bits, ends the string. One blank stands between two words.
class HelpWords {
 public:
  // The table at offset: the length of the longest string (two bytes), the size of the tree (four), the
  // tree. Nothing is read before the first string that isn't empty, and then errors (number 45, source
  // "TypeLibReader") tell of a damaged tree.
  HelpWords(const ByteView& library, std::uint64_t offset) : m_library(library), m_offset(offset) {}

  // The bytes of the text, in the library's code page.
  std::string Unpack(const std::string& packed) const;

 private:
  class Bits;

  ByteView Tree() const;

  ByteView m_library;
  std::uint64_t m_offset;
};

}  // namespace hearthmake::typelib
